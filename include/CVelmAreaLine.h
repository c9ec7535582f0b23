#pragma once

#include "VelmCommonGlobal.h"

#include <QMap>
#include <QString>
#include <QVector>

class CVelmDatabase;

/// How one area feature, a closed boundary, is drawn and annotated.
struct VelmAreaLineItem
{
    QString code;                ///< feature code, the key
    double linewidth = 0.0;      ///< width of the boundary
    QString enttype;             ///< entity type of the boundary, as text
    QString annrule;             ///< annotation rule
    QString arearule;            ///< area rule
    QString groupname;           ///< group it belongs to
    double linetypescale = 0.0;  ///< scale of the line type along the boundary
    int hatchcolor = 0;          ///< colour index
    int hatchbkcolor = 0;        ///< colour index of the background
};

/// The area-line definitions of all feature codes, from the table "QuobAreaLine".
/// Codes are compared exactly. Not guarded: one thread at a time. Only the configuration manager
/// makes one.
class VELMCOMMON_EXPORT CVelmAreaLine
{
public:
    virtual ~CVelmAreaLine();

    /// Whether there is an item of that code.
    bool isValidCode(const QString& code) const;
    /// @p item is written for a known code only.
    bool GetAreaLineItem(VelmAreaLineItem& item, const QString& code) const;

    /// @{
    /// Colour index of the hatch or its background; 7 for an unknown code, with which
    /// callers can draw without asking first.
    int GetAreaLineHatchColor(const QString& code) const;
    int GetAreaLineHatchBKColor(const QString& code) const;
    /// @}
    /// @{
    /// One field of the item; 0 or empty for an unknown code.
    double GetAreaLineLineWidth(const QString& code) const;
    double GetAreaLineLineTypeScale(const QString& code) const;
    QString GetAreaLineEntType(const QString& code);
    QString GetAreaLineAnnRule(const QString& code);
    QString GetAreaLineAreaRule(const QString& code);
    QString GetAreaLineGroupName(const QString& code);
    /// @}

    /// All items in the order of their codes.
    QVector<VelmAreaLineItem> GetAllAreaLineArray();

    /// Inserts or replaces an item in the database and then in memory.
    /// @return false if the database refuses; memory stays as it was
    bool addAreaLineItem(const VelmAreaLineItem& item);
    /// Inserts or replaces items in the database, all at once, and loads the whole table again if
    /// at least one was written. An item that is refused takes no other along. If another program
    /// locks the database, or the changes cannot be kept, none is written.
    /// @return whether all were written; true for none
    bool UpdateAreaLine(const QVector<VelmAreaLineItem>& items);

private:
    friend class CVelmConfigManager;

    CVelmAreaLine();
    Q_DISABLE_COPY(CVelmAreaLine)

    /// Replaces all items by the rows of the table; of rows with one code the last counts.
    /// @return whether nothing was loaded: the inverted sense is part of the interface
    bool initVelmAreaLineConfig(CVelmDatabase& db);

    void reload(CVelmDatabase& database);
    VelmAreaLineItem item(const QString& code) const;

    QMap<QString, VelmAreaLineItem> m_items;  // by code
};
