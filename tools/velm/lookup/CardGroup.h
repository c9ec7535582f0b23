#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

/// One group of a feature card: named values that are printed one a line and are a JSON object at
/// the same time.
class CardGroup
{
public:
    /// @p key in JSON, @p title above the lines.
    CardGroup(const QString& key, const QString& title) : m_key(key), m_title(title) {}

    // Each value has a key in JSON and a label before it.
    void add(const char* key, const char* label, const QString& text);
    void add(const char* key, const char* label, double number);
    void add(const char* key, const char* label, int number, const QString& meaning = QString());
    void add(const char* key, const char* label, const QStringList& texts);
    void addColour(const char* key, const char* label, int index);
    /// A JSON value that is printed as @p shown.
    void addValue(const char* key, const char* label, const QJsonValue& value,
                  const QString& shown);

    /// Rows below the values, an array of objects under @p key. Each row has a text for each
    /// column;
    /// @p columns are the keys, in capitals the header.
    void addRows(const char* key, const QStringList& columns, const QVector<QStringList>& rows);

    QString key() const { return m_key; }
    /// Makes the text of jsonText() once, for a group of many cards that is not changed any more.
    void keepText();
    QByteArray jsonText() const;
    void print() const;

private:
    QString m_key;
    QString m_title;
    QJsonObject m_json;
    QByteArray m_text;             // empty unless it is kept
    QVector<QStringList> m_lines;  // label, value and perhaps what stands behind it
    QStringList m_columns;
    QVector<QStringList> m_rows;
};
