#pragma once

#include "CVelmAreaLine.h"

#include <QMap>
#include <QString>

namespace velm::detail {

/// Replaces all @p items, which are kept by code, by the rows of the table "QuobAreaLine"; of rows
/// with one code the last counts. There are none if the reading breaks off.
/// @return whether there are none, as CVelmAreaLine::initVelmAreaLineConfig() answers
bool loadAreaLines(const CVelmDatabase& database, QMap<QString, VelmAreaLineItem>& items);

}  // namespace velm::detail
