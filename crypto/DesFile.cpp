#include "crypto/DesFile.h"

#include <algorithm>

namespace velm::detail {

namespace {

constexpr int kBlock = static_cast<int>(Des::kBlockSize);
constexpr int kPart = 1 << 18;  // bytes, whole blocks

size_t blocksOf(const QByteArray& part)
{
    return static_cast<size_t>(part.size() / kBlock);
}

/// Fills the last block with zeros. A part of whole blocks stays as it is.
void fillUp(QByteArray& part)
{
    part.append(QByteArray((kBlock - part.size() % kBlock) % kBlock, '\0'));
}

}  // namespace

DesFile::DesFile(const Des& des, const QString& inPath, const QString& outPath,
                 const CVelmCyptionDES2::Progress& progress)
    : m_des(des), m_outPath(outPath), m_progress(progress), m_in(inPath), m_out(outPath)
{}

QString DesFile::convert(bool encrypts, Replace replace)
{
    if (m_in.fileName().isEmpty() || m_outPath.isEmpty())
        return QStringLiteral("a file has no name");
    if (!m_in.open(QIODevice::ReadOnly))
        return QStringLiteral("\"%1\": ").arg(m_in.fileName()) + m_in.errorString();
    m_total = m_in.size();
    if (m_total == 0)
        return QStringLiteral("\"%1\" is empty").arg(m_in.fileName());
    m_out.limitAccessTo(m_in.fileName());
    QString problem = m_out.open();
    if (problem.isEmpty())
        problem = encrypts ? encrypt() : decrypt();
    m_in.close();  // it may be the one to be replaced
    return problem.isEmpty() ? m_out.commit(replace) : problem;
}

/// The blocks, and one more: of what is left, or of zeros where nothing is. A file of one block
/// gets zeros that are not encrypted, as this form has it.
QString DesFile::encrypt()
{
    QByteArray part;
    QString problem = read(part);
    for (; problem.isEmpty() && part.size() == kPart; problem = read(part)) {
        m_des.encrypt(part.constData(), part.data(), blocksOf(part));
        problem = m_out.write(part.constData(), part.size());
        if (!problem.isEmpty())
            return problem;
    }
    if (!problem.isEmpty())
        return problem;
    const bool isOneBlock = m_total == kBlock;
    part.append(QByteArray(kBlock - part.size() % kBlock, '\0'));
    m_des.encrypt(part.constData(), part.data(), isOneBlock ? 1 : blocksOf(part));
    return m_out.write(part.constData(), part.size());
}

QString DesFile::decrypt()
{
    QByteArray part;
    QString problem = read(part);
    for (; problem.isEmpty() && !part.isEmpty(); problem = read(part)) {
        const int size = part.size();
        fillUp(part);
        m_des.decrypt(part.constData(), part.data(), blocksOf(part));
        part.truncate(size);
        problem = writeWithoutLastZeros(part);
        if (!problem.isEmpty())
            return problem;
    }
    return problem;
}

/// Reads the next part, which is shorter than kPart at the end of the file only.
QString DesFile::read(QByteArray& part)
{
    part.resize(kPart);
    int size = 0;
    while (size < kPart) {
        const qint64 got = m_in.read(part.data() + size, kPart - size);
        if (got < 0)
            return QStringLiteral("\"%1\": ").arg(m_in.fileName()) + m_in.errorString();
        if (got == 0)
            break;
        size += static_cast<int>(got);
    }
    part.truncate(size);
    m_done += size;
    if (m_done > m_total || (size < kPart && m_done < m_total))
        return QStringLiteral("\"%1\" changed while it was read").arg(m_in.fileName());
    if (m_progress && !m_progress(m_done, m_total))
        return QStringLiteral("cancelled");
    return QString();
}

QString DesFile::writeWithoutLastZeros(const QByteArray& part)
{
    const auto lastByte =
        std::find_if(part.crbegin(), part.crend(), [](char byte) { return byte != '\0'; });
    const auto kept = static_cast<int>(part.crend() - lastByte);
    QString problem;
    for (; kept > 0 && m_heldBack > 0 && problem.isEmpty();) {
        const QByteArray zeros(static_cast<int>(std::min<qint64>(m_heldBack, kPart)), '\0');
        problem = m_out.write(zeros.constData(), zeros.size());
        m_heldBack -= zeros.size();
    }
    if (problem.isEmpty())
        problem = m_out.write(part.constData(), kept);
    m_heldBack += part.size() - kept;
    return problem;
}

}  // namespace velm::detail
