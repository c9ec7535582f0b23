#include "CVelmRegTable.h"

#include "support/TemporaryRoot.h"

#include <QSettings>

#include <limits>

namespace {

/// Natively the user's configuration lies in the test's root; in the registry the key is removed
/// behind the test.
class RegTable : public TemporaryRoot
{
protected:
    RegTable() : m_configHome(qgetenv("XDG_CONFIG_HOME"))
    {
        qputenv("XDG_CONFIG_HOME", root().toUtf8());
    }
    ~RegTable() override
    {
        qputenv("XDG_CONFIG_HOME", m_configHome);
#ifdef Q_OS_WIN
        QSettings(u"HKEY_CURRENT_USER\\Software\\VelmTest"_s, QSettings::NativeFormat).clear();
#endif
    }

    template<class T>
    T roundTrip(const T& value)
    {
        m_table.writeReg(value, m_key, u"值 1"_s);
        T read{};
        m_table.readReg(read, m_key, u"值 1"_s);
        return read;
    }

    CVelmRegTable m_table;
    const QString m_key = u"HKEY_CURRENT_USER\\Software\\VelmTest\\测绘 键"_s;

private:
    QByteArray m_configHome;
};

}  // namespace

TEST_F(RegTable, GivesBackWhatWasWritten)
{
    for (const int value : {0, -1, std::numeric_limits<int>::min()})
        EXPECT_EQ(roundTrip(value), value);
    for (const long value : {7L, -2147483647L - 1})
        EXPECT_EQ(roundTrip(value), value);
    for (const float value : {0.1F, -3.4e38F})
        EXPECT_EQ(roundTrip(value), value);
    for (const double value : {0.1, 1e300, -1.0 / 3.0})
        EXPECT_EQ(roundTrip(value), value);
    for (const QString& value : {u"图\\形; \"a\" = @b, %20"_s, u"x\ny"_s, QString()})
        EXPECT_EQ(roundTrip(value), value);
#ifndef Q_OS_WIN
    EXPECT_TRUE(
        QFile::exists(path(u"velm/registry/HKEY_CURRENT_USER/Software/VelmTest/测绘 键.ini"_s)));
    m_table.writeReg(1, u"HKEY_CURRENT_USER\\..\\..\\escaped/x"_s, u"n"_s);
    EXPECT_TRUE(
        QFile::exists(path(u"velm/registry/HKEY_CURRENT_USER/%2E%2E/%2E%2E/escaped%2Fx.ini"_s)));
#endif
    m_table.writeReg(u"4294967301"_s, m_key, u"long"_s);
    long cut = 0;
    m_table.readReg(cut, m_key, u"long"_s);
    EXPECT_EQ(cut, 5L) << "cut to 32 bits";
}

TEST_F(RegTable, ReadsZeroForWhatIsMissingOrDoesNotConvert)
{
    m_table.writeReg(u"abc"_s, m_key, u"text"_s);
    for (const QString& name : {u"text"_s, u"missing"_s}) {
        int integer = 9;
        long longer = 9;
        float single = 9;
        double real = 9;
        m_table.readReg(integer, m_key, name);
        m_table.readReg(longer, m_key, name);
        m_table.readReg(single, m_key, name);
        m_table.readReg(real, m_key, name);
        EXPECT_EQ(real + single + longer + integer, 0) << name.toStdString();
    }
    QString text = u"before"_s;
    m_table.readReg(text, m_key, u"missing"_s);
    EXPECT_EQ(text, QString());
}
