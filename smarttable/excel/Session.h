#pragma once

#include "SmartTable.h"
#include "smarttable/sheet/Workbook.h"

#include <memory>
#include <string>
#include <vector>

namespace SmartTable::detail {

/// What the objects that users hold of one workbook have in common.
struct Session
{
    std::unique_ptr<Workbook> workbook;  // null once the public workbook is gone
    Encoding encoding = EncodingLocal;
    std::string problem;  // of the last operation, UTF-8
    int propertySheet = 1;
    int level = 6;

    /// A text that a user gave, as UTF-8.
    std::string given(const char* text) const;
    QString givenText(const char* text) const;
    /// UTF-8, as users want it.
    String answered(std::string_view text) const;

    /// Does something that answers what is wrong, and notes that. @return whether nothing is
    template<class Operation>
    bool run(const Operation& operation)
    {
        problem.clear();
        try {
            problem = operation().toStdString();
        } catch (const std::bad_alloc&) {
            problem = "out of memory";
        }
        return problem.empty();
    }
};

IntList listOf(const std::vector<int>& numbers);

}  // namespace SmartTable::detail
