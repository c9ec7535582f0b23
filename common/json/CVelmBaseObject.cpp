#include "CVelmBaseObject.h"

QString CVelmBaseObject::velmObjectGuid()
{
    return QString();
}
