#include "support/LocalCodec.h"

#include <QTextCodec>

LocalCodec::LocalCodec(const char* name) : m_previous(QTextCodec::codecForLocale())
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
}

LocalCodec::~LocalCodec()
{
    QTextCodec::setCodecForLocale(m_previous);
}
