#pragma once

#include "lookup/CardGroup.h"

#include "VelmTypes.h"

#include <optional>

class CVelmAreaLine;
class CVelmConfigManager;
class CVelmIndex;
class CVelmRecordManager;
class CVelmWork;
struct AnnotationAnswer;

/// The groups of a feature card, each from one part of the configuration; none where it tells
/// nothing of the code.
namespace groups {

// How the code is drawn.
std::optional<CardGroup> indexGroup(const QString& code, const CVelmIndex& index);
std::optional<CardGroup> workGroup(const QString& code, const CVelmWork& work);
std::optional<CardGroup> areaGroup(const QString& code, const CVelmAreaLine& areas);
std::optional<CardGroup> annotationGroup(const AnnotationAnswer& annotation);

// What is kept with it.
std::optional<CardGroup> tableGroup(const QString& table, const CVelmConfigManager& manager);
std::optional<CardGroup> recordGroup(const QString& code, const CVelmRecordManager& records);

}  // namespace groups
