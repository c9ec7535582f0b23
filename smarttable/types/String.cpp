#include "SmartTable.h"

#include <cstring>
#include <new>
#include <utility>

namespace SmartTable {

namespace {

/// Null for an empty text, and where there is no memory for it.
char* copyOf(const char* text)
{
    if (!text || *text == '\0')
        return nullptr;
    const size_t size = std::strlen(text) + 1;
    char* const copy = new (std::nothrow) char[size];
    if (copy)
        std::memcpy(copy, text, size);
    return copy;
}

}  // namespace

String::String() : m_text(nullptr) {}

String::String(const char* text) : m_text(copyOf(text)) {}

String::String(const String& other) : m_text(copyOf(other.m_text)) {}

String::~String()
{
    delete[] m_text;
}

String& String::operator=(const String& other)
{
    if (this != &other)
        *this = other.m_text;
    return *this;
}

String& String::operator=(const char* text)
{
    char* const before = m_text;  // of which the new text may be a part
    m_text = copyOf(text);
    delete[] before;
    return *this;
}

const char* String::p() const
{
    return m_text ? m_text : "";
}

const char* String::__str__() const
{
    return p();
}

bool String::empty() const
{
    return !m_text;
}

}  // namespace SmartTable
