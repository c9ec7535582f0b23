#pragma once

#include "common/files/StagedFile.h"
#include "common/files/SystemFile.h"
#include "crypto/Des.h"
#include "CVelmCyptionDES2.h"

namespace velm::detail {

/// Encrypts or decrypts one file, a part of it at a time.
class DesFile
{
public:
    DesFile(const Des& des, const QString& inPath, const QString& outPath,
            const CVelmCyptionDES2::Progress& progress);

    /// Puts the new file into its place. @return why it is not there; empty if it is
    QString convert(bool encrypts, Replace replace);

private:
    QString encrypt();
    QString decrypt();
    QString read(QByteArray& part);
    QString writeWithoutLastZeros(const QByteArray& part);

    const Des& m_des;
    QString m_outPath;
    const CVelmCyptionDES2::Progress& m_progress;
    SystemFile m_in;
    StagedFile m_out;
    qint64 m_total = 0;
    qint64 m_done = 0;
    qint64 m_heldBack = 0;  // zeros that are written if something follows
};

}  // namespace velm::detail
