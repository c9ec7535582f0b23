#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QMap>
#include <QString>

/// How one feature code is drawn.
struct VelmWorkItem
{
    int color = -1;    ///< colour index; -1 is not given
    int enttype = -1;  ///< number of Velm::EntityType; -1 is not given
    QString code;      ///< feature code, the key
    QString par1;      ///< first drawing parameter
    QString par2;      ///< second drawing parameter
    QString text;      ///< short description
    QString layer;     ///< layer name
};

/// The work definitions: layer, colour, entity type and parameters of every feature code.
/// Codes are compared exactly. Lookups write their output on success only. Not guarded: one thread
/// at a time.
class VELMCOMMON_EXPORT CVelmWork
{
public:
    CVelmWork();
    CVelmWork(const CVelmWork& other);             ///< has items of its own
    CVelmWork& operator=(const CVelmWork& other);  ///< likewise
    virtual ~CVelmWork();

    /// Whether the code is defined, exactly as it is written.
    bool isValidCode(const QString& code) const;

    /// @{
    /// One field of the item.
    /// @return VelmOk; VelmNotFound for an unknown code
    Velm::ErrorStatus get_text(const QString& code, QString& text) const;
    Velm::ErrorStatus get_color(const QString& code, int& color) const;
    Velm::ErrorStatus get_parOne(const QString& code, QString& par1) const;
    Velm::ErrorStatus get_parTwo(const QString& code, QString& par2) const;
    Velm::ErrorStatus get_enttype(const QString& code, int& enttype) const;
    /// @}
    /// The layer; @p flag has no effect.
    /// @return VelmOk; VelmNotFound for an unknown code
    Velm::ErrorStatus get_layer(const QString& code, QString& layer, bool flag) const;
    /// @{
    /// Most fields of the item, with or without its colour.
    /// @return VelmOk; VelmNotFound for an unknown code
    Velm::ErrorStatus get_par(const QString& code, QString& layer, int& enttype, QString& par1,
                              QString& par2, QString& text) const;
    Velm::ErrorStatus get_par(const QString& code, QString& layer, int& enttype, QString& par1,
                              QString& par2, QString& text, int& color) const;
    /// @}

    /// The statuses differ from the other lookups on purpose.
    /// @return VelmOk; VelmEmptyArgument for an empty code; VelmWorkCodeNotFound for an unknown one
    Velm::ErrorStatus getWorkItem(const QString& code, VelmWorkItem& item) const;

    /// Inserts or replaces an item in memory and in the table "Workdef" of the system configuration
    /// database.
    /// @return VelmOk; VelmDatabaseOpenFailed or VelmSqlExecFailed, with the item in memory all the
    /// same
    Velm::ErrorStatus addItem(const VelmWorkItem& item);
    /// Removes an item from memory and from "Workdef".
    /// @return VelmOk; VelmNotFound; VelmDatabaseOpenFailed or VelmSqlExecFailed, with the item
    /// gone from memory
    Velm::ErrorStatus removeItem(const QString& code);

protected:
    QMap<QString, VelmWorkItem> m_items;  ///< by code
};
