#pragma once

#include <QString>

/// Programs and drivers of others that the library can work with. Each answer is empty for what is
/// not installed.
namespace companions {

/// The ODBC driver that the database wrapper names for Access files.
QString accessDriver();

/// The servers for documents that are registered: "Word, Excel".
QString microsoftOffice();

/// The path of LibreOffice.
QString libreOffice();

}  // namespace companions
