#pragma once

#include "VelmCommonGlobal.h"

#include <QString>

/// Single values in the registry.
/// @p keyPath is the full path of a key, the root key first and "\" between the parts:
/// `HKEY_CURRENT_USER\Software\X`. Elsewhere than on Windows the same path names an INI file below
/// the user's configuration folder: velm/registry/HKEY_CURRENT_USER/Software/X.ini, where letter
/// case counts.
///
/// No errors are reported. A write that is not allowed is lost; a value that is missing or does not
/// convert reads as 0 or the empty text, and the output is always written. Every call opens the key
/// for itself; calls of several threads are independent.
class VELMCOMMON_EXPORT CVelmRegTable
{
public:
    virtual ~CVelmRegTable() = default;

    /// @{
    /// Stores @p value under @p name; an older value goes, whatever its type.
    void writeReg(int value, const QString& keyPath, const QString& name);
    /// Stores the lower 32 bits as a number.
    void writeReg(long value, const QString& keyPath, const QString& name);
    void writeReg(float value, const QString& keyPath, const QString& name);
    void writeReg(double value, const QString& keyPath, const QString& name);
    void writeReg(const QString& value, const QString& keyPath, const QString& name);
    /// @}

    /// @{
    /// The value of that name, converted if it was stored as another type.
    void readReg(int& value, const QString& keyPath, const QString& name);
    /// The lower 32 bits of the stored number, signed; 0 if there is none.
    void readReg(long& value, const QString& keyPath, const QString& name);
    void readReg(float& value, const QString& keyPath, const QString& name);
    void readReg(double& value, const QString& keyPath, const QString& name);
    void readReg(QString& value, const QString& keyPath, const QString& name);
    /// @}
};
