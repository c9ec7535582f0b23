#pragma once

#include "support/Text.h"

#include <QMap>
#include <QString>
#include <QVariant>
#include <QVector>

using Record = QMap<QString, QVariant>;
using Rows = QVector<Record>;
