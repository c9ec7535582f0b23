#pragma once

#include "CVelmBaseObjectPrivate.h"
#include "VelmCommonGlobal.h"

#include <QString>

#include <memory>

/// Base of objects that keep their data in a private object and have an identity.
/// A copy shares the private object, which goes with its last owner; a derived class that wants
/// copies of its own makes them. One thread at a time for all that share.
class VELMCOMMON_EXPORT CVelmBaseObject
{
public:
    CVelmBaseObject() = default;
    CVelmBaseObject(const CVelmBaseObject& other) = default;  ///< shares the private object
    CVelmBaseObject& operator=(const CVelmBaseObject& other) = default;  ///< likewise
    virtual ~CVelmBaseObject() = default;

    /// The identity of the object; empty here.
    virtual QString velmObjectGuid();

protected:
    /// Takes ownership of @p d, which may be null.
    explicit CVelmBaseObject(CVelmBaseObjectPrivate* d) : m_d(d) {}

    /// The private object, owned by this one and its copies; may be null.
    CVelmBaseObjectPrivate* d() const { return m_d.get(); }

private:
    std::shared_ptr<CVelmBaseObjectPrivate> m_d;
};
