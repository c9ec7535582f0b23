#pragma once

class QTextCodec;

/// Makes a codec the local 8-bit code page while it lives.
class LocalCodec
{
public:
    explicit LocalCodec(const char* name);
    ~LocalCodec();
    LocalCodec(const LocalCodec&) = delete;
    LocalCodec& operator=(const LocalCodec&) = delete;

private:
    QTextCodec* m_previous;
};
