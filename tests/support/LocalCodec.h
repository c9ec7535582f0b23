#pragma once

#include <QTextCodec>

/// Makes a codec the local 8-bit code page while it lives.
class LocalCodec
{
public:
    explicit LocalCodec(const char* name) : m_previous(QTextCodec::codecForLocale())
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~LocalCodec() { QTextCodec::setCodecForLocale(m_previous); }
    Q_DISABLE_COPY(LocalCodec)

private:
    QTextCodec* const m_previous;
};
