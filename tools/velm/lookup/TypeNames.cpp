#include "lookup/TypeNames.h"

#include "VelmTypes.h"

#include <initializer_list>
#include <utility>

namespace {

/// The name of a number; the number itself if it has none.
QString nameOf(int number, std::initializer_list<std::pair<int, const char*>> names)
{
    for (const auto& name : names) {
        if (name.first == number)
            return QLatin1String(name.second);
    }
    return QString::number(number);
}

}  // namespace

QString entityTypeName(int type)
{
    return nameOf(type, {{Velm::EntityGeneral, "general"},
                         {Velm::EntityText, "text"},
                         {Velm::EntitySpecialLine, "special line"}});
}

QString tableTypeName(int type)
{
    return nameOf(type, {{Velm::TablePoint, "point"},
                         {Velm::TableLine, "line"},
                         {Velm::TableArea, "area"},
                         {Velm::TableAnnotation, "annotation"},
                         {Velm::TablePipePoint, "pipe point"},
                         {Velm::TablePipeLine, "pipe line"}});
}

QString fieldTypeName(int type)
{
    return nameOf(type, {{Velm::FieldText, "text"},
                         {Velm::FieldInt, "integer"},
                         {Velm::FieldLong, "long"},
                         {Velm::FieldReal, "real"},
                         {Velm::FieldDate, "date"}});
}
