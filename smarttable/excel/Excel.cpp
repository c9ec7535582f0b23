#include "smarttable/excel/ExcelPrivate.h"

#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace SmartTable {

using detail::Workbook;

QString Excel::Private::give(const Workbook::SheetPointer& found, ExcelSheet& sheet) const
{
    QString problem = found ? session->workbook->open(*found) : noSheet();
    if (problem.isEmpty()) {
        sheet.d->session = session;
        sheet.d->sheet = found;
    }
    return problem;
}

Excel::Excel() : d(new Private)
{
    initExcel();
}

Excel::~Excel()
{
    d->session->workbook.reset();
    delete d;
}

void Excel::setEncoding(Encoding encoding)
{
    d->session->encoding = encoding;
}

String Excel::lastError() const
{
    return d->session->answered(d->session->problem);
}

void Excel::initExcel()
{
    d->session->run([this] {
        d->session->workbook = std::make_unique<Workbook>();
        d->session->propertySheet = 1;
        return QString();
    });
}

int Excel::loadExcel(const char* file)
{
    const QString path = d->session->givenText(file);
    const bool isLoaded = d->session->run([&] {
        auto workbook = std::make_unique<Workbook>();
        QString problem = workbook->load(path);
        if (problem.isEmpty()) {
            d->session->workbook = std::move(workbook);
            d->session->propertySheet = 1;
        }
        return problem;
    });
    if (isLoaded)
        return LoadOk;
    if (d->session->problem == "out of memory")
        return LoadOutOfMemory;
    const QFileInfo info(path);
    return info.isFile() && info.isReadable() ? LoadNotRead : LoadCannotOpen;
}

bool Excel::save(const char* file)
{
    return d->session->run(
        [&] { return d->session->workbook->save(d->session->givenText(file), d->session->level); });
}

void Excel::setCompressLevel(int level)
{
    constexpr int kUsual = 6;
    constexpr int kBest = 9;
    d->session->level = level >= 0 && level <= kBest ? level : kUsual;
}

IntList Excel::allSheetID() const
{
    std::vector<int> ids;
    for (const Workbook::SheetPointer& sheet : d->session->workbook->sheets())
        ids.push_back(sheet->id);
    return detail::listOf(ids);
}

bool Excel::getSheetByID(int id, ExcelSheet& sheet)
{
    return d->session->run([&] { return d->give(d->session->workbook->find(id), sheet); });
}

bool Excel::getSheetByName(const char* name, ExcelSheet& sheet)
{
    return d->session->run(
        [&] { return d->give(d->session->workbook->find(d->session->givenText(name)), sheet); });
}

bool Excel::addSheet(const char* name, ExcelSheet& sheet)
{
    return d->session->run([&] {
        Workbook::SheetPointer added;
        QString problem = d->session->workbook->add(d->session->givenText(name), added);
        return problem.isEmpty() ? d->give(added, sheet) : problem;
    });
}

void Excel::removeSheet(int id)
{
    d->session->run([&] {
        const Workbook::SheetPointer sheet = d->session->workbook->find(id);
        if (!sheet)
            return Private::noSheet();
        d->session->workbook->remove(sheet);
        return QString();
    });
}

bool Excel::setPropertySheet(int id)
{
    return d->session->run([&] {
        if (!d->session->workbook->find(id))
            return Private::noSheet();
        d->session->propertySheet = id;
        return QString();
    });
}

int Excel::getProperty(int row, int col)
{
    int property = 0;
    d->session->run([&] {
        const Workbook::SheetPointer sheet = d->session->workbook->find(d->session->propertySheet);
        QString problem = sheet ? d->session->workbook->open(*sheet) : Private::noSheet();
        const detail::Cell* const cell =
            problem.isEmpty() ? sheet->content->cells.find({row, col}) : nullptr;
        property = cell ? static_cast<int>(cell->style) : 0;
        return problem;
    });
    return property;
}

}  // namespace SmartTable
