#pragma once

#include <QByteArray>
#include <QString>

class QTextCodec;

/// GB18030 text, and GBK as its one- and two-byte part, with the same answers whichever codecs Qt
/// was built with.
///
/// The tables stay Qt's; what is settled here is where its two kinds differ. A Qt with ICU does not
/// count invalid characters. One without reads characters beyond the BMP as 16 bits and has the
/// table of 2000, in which A8BC is a private-use character; ICU has that of 2005, which is the one
/// that counts. Only the codec named "GB18030" will do: the one named "GBK" is Microsoft's code
/// page 936 in one kind and gives 81 cells another meaning.
namespace velm::detail {

/// Whether @p data is free of sequences that GB18030 does not permit. Permitted are 00-7F, pairs of
/// 81-FE with 40-7E or 80-FE, and groups of four that stand for a Unicode character (GB 18030-2005,
/// clauses 4 and 5). A sequence that is cut off at the end is permitted.
bool isValidGb18030(const QByteArray& data);

/// The same without the groups of four.
bool isValidGbk(const QByteArray& data);

/// Decodes valid GB18030 bytes; a sequence that is cut off at the end is dropped.
QString decodeGb18030(const QByteArray& data);

/// The one or two bytes of a character in GBK; empty if GBK does not have it. @p gb18030 is that
/// codec of Qt.
QByteArray gbkBytes(const QTextCodec* gb18030, QChar ch);

}  // namespace velm::detail
