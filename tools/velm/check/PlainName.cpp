#include "check/PlainName.h"

#include <algorithm>

bool isControl(QChar ch)
{
    return ch.category() == QChar::Other_Control || ch.category() == QChar::Other_Format
           || ch == QChar::LineSeparator || ch == QChar::ParagraphSeparator;
}

QString plainName(const QString& name)
{
    QString plain = name;
    QChar* const end = std::remove_if(plain.begin(), plain.end(), isControl);
    plain.truncate(static_cast<int>(end - plain.begin()));
    return plain.trimmed();
}

bool isBlank(const QString& text)
{
    return plainName(text).isEmpty();
}

QString emptyOrBlank(const QString& text)
{
    if (text.isEmpty())
        return QStringLiteral("is empty");
    return text.trimmed().isEmpty() ? QStringLiteral("holds nothing but blanks")
                                    : QStringLiteral("holds nothing that anybody sees");
}
