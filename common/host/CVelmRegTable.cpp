#include "CVelmRegTable.h"

#include "common/platform/Platform.h"

#include <QSettings>
#include <QVariant>

namespace {

void write(const QVariant& value, const QString& keyPath, const QString& name)
{
    velm::detail::platform::openRegistryKey(keyPath)->setValue(name, value);
}

QVariant read(const QString& keyPath, const QString& name)
{
    return velm::detail::platform::openRegistryKey(keyPath)->value(name);
}

}  // namespace

void CVelmRegTable::writeReg(int value, const QString& keyPath, const QString& name)
{
    write(value, keyPath, name);
}

void CVelmRegTable::writeReg(long value, const QString& keyPath, const QString& name)
{
    write(static_cast<qint32>(value), keyPath, name);
}

void CVelmRegTable::writeReg(float value, const QString& keyPath, const QString& name)
{
    write(value, keyPath, name);
}

void CVelmRegTable::writeReg(double value, const QString& keyPath, const QString& name)
{
    write(value, keyPath, name);
}

void CVelmRegTable::writeReg(const QString& value, const QString& keyPath, const QString& name)
{
    write(value, keyPath, name);
}

void CVelmRegTable::readReg(int& value, const QString& keyPath, const QString& name)
{
    value = read(keyPath, name).toInt();
}

void CVelmRegTable::readReg(long& value, const QString& keyPath, const QString& name)
{
    value = static_cast<qint32>(read(keyPath, name).toLongLong());
}

void CVelmRegTable::readReg(float& value, const QString& keyPath, const QString& name)
{
    value = read(keyPath, name).toFloat();
}

void CVelmRegTable::readReg(double& value, const QString& keyPath, const QString& name)
{
    value = read(keyPath, name).toDouble();
}

void CVelmRegTable::readReg(QString& value, const QString& keyPath, const QString& name)
{
    value = read(keyPath, name).toString();
}
