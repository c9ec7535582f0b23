#pragma once

#include <QDomDocument>

/// What the copies of one CVelmXmlManager share.
class CVelmXmlManagerPrivate
{
public:
    QDomDocument document;
};
