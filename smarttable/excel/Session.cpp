#include "smarttable/excel/Session.h"

#include <algorithm>

namespace SmartTable::detail {

QString Session::givenText(const char* text) const
{
    return encoding == EncodingUtf8 ? QString::fromUtf8(text) : QString::fromLocal8Bit(text);
}

std::string Session::given(const char* text) const
{
    if (!text)
        return std::string();
    return encoding == EncodingUtf8 ? std::string(text) : givenText(text).toStdString();
}

String Session::answered(std::string_view text) const
{
    const QByteArray bytes(text.data(), static_cast<int>(text.size()));
    return encoding == EncodingUtf8 ? String(bytes.constData())
                                    : String(QString::fromUtf8(bytes).toLocal8Bit().constData());
}

IntList listOf(const std::vector<int>& numbers)
{
    IntList list;
    int* const first = list.create(static_cast<int>(numbers.size()));
    if (first)
        std::copy(numbers.begin(), numbers.end(), first);
    return list;
}

}  // namespace SmartTable::detail
