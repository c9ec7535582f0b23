#pragma once

#include "VelmCommonGlobal.h"
#include "VelmTypes.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>

/// How the annotation of one feature code is placed and drawn.
struct VelmAnnItem
{
    int color = 7;                           ///< colour index of the work definition
    int decimal = 0;                         ///< digits behind the point
    QString code;                            ///< feature code
    QString font;                            ///< name of the font
    double height = 1.0;                     ///< of the text, as the table gives it
    double rotate = 0.0;                     ///< rotation, as the table gives it
    double factor = 0.0;                     ///< width factor of the font
    QString place;                           ///< placement
    QString layer;                           ///< layer of the work definition
    double linetype = 0.0;                   ///< number of the line type; getLineType() cuts it off
    QString text;                            ///< what is written
    QMap<QString, QVariant> extdata;         ///< free data
    Velm::AnnType anntype = Velm::AnnType1;  ///< annotation kind
    Velm::EntityType enttype = Velm::EntityUnset;  ///< entity that it becomes
    Velm::InputType inputtype = Velm::InputUnset;  ///< how the value is entered
};

/// The annotation definitions, from the table "VelmAnnotate" and the work definitions.
/// Nothing is kept in memory: every query opens the database and reads one row, so whoever needs
/// several fields asks for the item, and for many codes getAnnotateItems(). One thread at a time.
/// Only the configuration manager makes one.
class VELMCOMMON_EXPORT CVelmAnnotate
{
public:
    virtual ~CVelmAnnotate();

    /// @p item gets what the row tells up to a number that is out of range, which ends it. A code
    /// without a work definition leaves colour and layer alone.
    /// @return VelmOk; VelmNoData for an unknown code; VelmInvalidValue if INPUT, ANNTYPE or
    /// ENTTYPE, checked in this order, is out of range; VelmDatabaseOpenFailed; VelmSqlExecFailed
    Velm::ErrorStatus getAnnotateItem(const QString& code, VelmAnnItem& item);

    /// Gets one item: of @p code, with what getAnnotateItem() answers and writes into a new item;
    /// but a quote in a code is a character here like any other. Answers whether to go on.
    using AnnotateItemVisitor =
        std::function<bool(const QString& code, Velm::ErrorStatus status, const VelmAnnItem& item)>;
    /// The items of many codes in their order, each code as often as it is named. The database is
    /// opened once and read in one state, so @p visit must not change the configuration. A table
    /// of texts in CODE without an index is read once, up to the bound of a load; the rows of @p
    /// codes are in memory then, and what lies behind damage or the bound answers
    /// VelmSqlExecFailed.
    void getAnnotateItems(const QStringList& codes, const AnnotateItemVisitor& visit);

    /// @{
    /// One field of the item, written on success only. Answer like getAnnotateItem().
    Velm::ErrorStatus getFont(const QString& code, QString& font);
    Velm::ErrorStatus getPlace(const QString& code, QString& place);
    Velm::ErrorStatus getDecimal(const QString& code, int& decimal);
    Velm::ErrorStatus getHeight(const QString& code, double& height);
    Velm::ErrorStatus getRotate(const QString& code, double& rotate);
    Velm::ErrorStatus getFactor(const QString& code, double& factor);
    /// Truncated towards 0; 0 for what an int cannot hold. Answers like getAnnotateItem().
    Velm::ErrorStatus getLineType(const QString& code, int& linetype);
    Velm::ErrorStatus getAnnText(const QString& code, QString& text);
    Velm::ErrorStatus getAnnType(const QString& code, Velm::AnnType& type);
    Velm::ErrorStatus getEntType(const QString& code, Velm::EntityType& type);
    Velm::ErrorStatus getInputType(const QString& code, Velm::InputType& type);
    /// @}

private:
    friend class CVelmConfigManager;

    CVelmAnnotate();
    Q_DISABLE_COPY(CVelmAnnotate)
};
