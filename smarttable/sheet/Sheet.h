#pragma once

#include "smarttable/sheet/Worksheet.h"

#include <QString>

#include <memory>

namespace SmartTable::detail {

class Workbook;

/// A sheet of a workbook, read when it is asked for first.
struct Sheet
{
    Workbook* workbook = nullptr;  // null once that is gone, or the sheet was removed
    int id = 0;
    QString name;
    QString part;
    std::unique_ptr<Worksheet> content;  // null until it is read
    bool isTouched = false;
};

}  // namespace SmartTable::detail
