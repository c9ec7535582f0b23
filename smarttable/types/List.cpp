#include "SmartTable.h"

#include <algorithm>
#include <new>

namespace SmartTable {

template<class Value>
List<Value>::List() : m_values(nullptr), m_length(0), m_spare()
{}

template<class Value>
List<Value>::List(const List& other) : List()
{
    *this = other;
}

template<class Value>
List<Value>::~List()
{
    delete[] m_values;
}

template<class Value>
List<Value>& List<Value>::operator=(const List& other)
{
    if (this != &other && create(other.m_length))
        std::copy(other.m_values, other.m_values + other.m_length, m_values);
    return *this;
}

template<class Value>
Value* List<Value>::create(int length)
{
    delete[] m_values;
    m_values = length > 0 ? new (std::nothrow) Value[static_cast<size_t>(length)]() : nullptr;
    m_length = m_values ? length : 0;
    return m_values;
}

template<class Value>
int List<Value>::length() const
{
    return m_length;
}

template<class Value>
Value& List<Value>::operator[](int at)
{
    return at >= 0 && at < m_length ? m_values[at] : m_spare;
}

template<class Value>
const Value& List<Value>::operator[](int at) const
{
    return at >= 0 && at < m_length ? m_values[at] : m_spare;
}

template class SMARTTABLE_EXPORT List<int>;
template class SMARTTABLE_EXPORT List<double>;
template class SMARTTABLE_EXPORT List<ExcelCellData>;

}  // namespace SmartTable
