#pragma once

#include "lookup/CardGroup.h"

#include "VelmTypes.h"

#include <optional>

class CVelmAreaLine;
class CVelmConfigManager;
class CVelmIndex;
class CVelmRecordManager;
class CVelmWork;
struct VelmAnnItem;

/// The groups of a feature card, each from one part of the configuration; none where it tells
/// nothing of the code.
namespace groups {

// How the code is drawn.
std::optional<CardGroup> indexGroup(const QString& code, const CVelmIndex& index);
std::optional<CardGroup> workGroup(const QString& code, const CVelmWork& work);
std::optional<CardGroup> areaGroup(const QString& code, const CVelmAreaLine& areas);
/// Of what the library has answered about the annotation.
std::optional<CardGroup> annotationGroup(Velm::ErrorStatus status, const VelmAnnItem& item);

// What is kept with it.
std::optional<CardGroup> tableGroup(const QString& table, const CVelmConfigManager& manager);
std::optional<CardGroup> recordGroup(const QString& code, const CVelmRecordManager& records);

}  // namespace groups
