#include "CVelmCompress.h"

#include <benchmark/benchmark.h>
#include <minizip/unzip.h>
#include <minizip/zip.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <random>
#include <vector>

namespace {

constexpr int kSmallFiles = 10000;
constexpr int kSmallSize = 2000;
constexpr qint64 kLargeSize = 1LL << 30;
constexpr int kLevel = 6;
constexpr int kPart = 1 << 17;

/// Text that compresses to about a third, as drawings do.
QByteArray textOf(int size, unsigned seed)
{
    std::mt19937 random(seed);
    QByteArray text;
    while (text.size() < size)
        text += QByteArray::number(static_cast<int>(random() % 100000)) + " LINE ";
    return text.left(size);
}

/// A folder to compress, and places for what comes of it.
class Files
{
public:
    Files(int files, qint64 size)
    {
        QDir().mkpath(folder());
        const QByteArray part = textOf(kPart, 1);
        for (int i = 0; i < files; ++i) {
            QFile file(path(i));
            file.open(QIODevice::WriteOnly);
            if (size < kPart)
                file.write(textOf(static_cast<int>(size), static_cast<unsigned>(i)));
            for (qint64 done = 0; size >= kPart && done < size; done += part.size())
                file.write(part);
        }
        m_count = files;
        CVelmCompress zip;
        zip.compress({folder()}, archive());
    }
    int count() const { return m_count; }
    QString folder() const { return m_folder.filePath(QStringLiteral("in")); }
    QString path(int i) const { return folder() + QStringLiteral("/%1.dxf").arg(i); }
    QString archive() const { return m_folder.filePath(QStringLiteral("in.zip")); }
    QString madeArchive() const { return m_folder.filePath(QStringLiteral("out.zip")); }
    QString outFolder() const { return m_folder.filePath(QStringLiteral("out")); }

private:
    QTemporaryDir m_folder;
    int m_count = 0;
};

const Files& smallFiles()
{
    static const Files files(kSmallFiles, kSmallSize);
    return files;
}

const Files& largeFile()
{
    static const Files files(1, kLargeSize);
    return files;
}

using Source = const Files& (*)();

void Compress_Library(benchmark::State& state, Source source)
{
    const Files& files = source();
    CVelmCompress zip;
    zip.setLevel(kLevel);
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(files.madeArchive());
        state.ResumeTiming();
        if (!zip.compress({files.folder()}, files.madeArchive()))
            state.SkipWithError(qPrintable(zip.errorText()));
    }
}
BENCHMARK_CAPTURE(Compress_Library, many, smallFiles)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Compress_Library, large, largeFile)->Unit(benchmark::kMillisecond);

/// The plain calls: the names are known, nothing is checked, times are left out.
void Compress_Minizip(benchmark::State& state, Source source)
{
    const Files& files = source();
    std::vector<char> part(kPart);
    for (auto _ : state) {
        zipFile zip = zipOpen64(qPrintable(files.madeArchive()), APPEND_STATUS_CREATE);
        for (int i = 0; i < files.count(); ++i) {
            FILE* in = std::fopen(qPrintable(files.path(i)), "rb");
            zip_fileinfo info{};
            zipOpenNewFileInZip64(zip, qPrintable(QStringLiteral("in/%1.dxf").arg(i)), &info,
                                  nullptr, 0, nullptr, 0, nullptr, 8, kLevel, 0);
            for (size_t got = std::fread(part.data(), 1, part.size(), in); got > 0;
                 got = std::fread(part.data(), 1, part.size(), in))
                zipWriteInFileInZip(zip, part.data(), static_cast<unsigned>(got));
            zipCloseFileInZip(zip);
            std::fclose(in);
        }
        zipClose(zip, nullptr);
    }
}
BENCHMARK_CAPTURE(Compress_Minizip, many, smallFiles)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Compress_Minizip, large, largeFile)->Unit(benchmark::kMillisecond);

void Extract_Library(benchmark::State& state, Source source)
{
    const Files& files = source();
    CVelmCompress zip;
    zip.setMostRatio(10000);
    for (auto _ : state) {
        if (!zip.extract(files.archive(), files.outFolder()))
            state.SkipWithError(qPrintable(zip.errorText()));
        state.PauseTiming();
        QDir(files.outFolder()).removeRecursively();
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(Extract_Library, many, smallFiles)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Extract_Library, large, largeFile)->Unit(benchmark::kMillisecond);

void Extract_Minizip(benchmark::State& state, Source source)
{
    const Files& files = source();
    std::vector<char> part(kPart);
    for (auto _ : state) {
        QDir().mkpath(files.outFolder() + QStringLiteral("/in"));
        unzFile zip = unzOpen64(qPrintable(files.archive()));
        for (int step = unzGoToFirstFile(zip); step == UNZ_OK; step = unzGoToNextFile(zip)) {
            char name[100];
            unzGetCurrentFileInfo64(zip, nullptr, name, sizeof name, nullptr, 0, nullptr, 0);
            if (QByteArray(name).endsWith('/'))
                continue;
            FILE* out = std::fopen((files.outFolder().toStdString() + '/' + name).c_str(), "wb");
            unzOpenCurrentFile(zip);
            for (int got = unzReadCurrentFile(zip, part.data(), kPart); got > 0;
                 got = unzReadCurrentFile(zip, part.data(), kPart))
                std::fwrite(part.data(), 1, static_cast<size_t>(got), out);
            unzCloseCurrentFile(zip);
            std::fclose(out);
        }
        unzClose(zip);
        state.PauseTiming();
        QDir(files.outFolder()).removeRecursively();
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(Extract_Minizip, many, smallFiles)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Extract_Minizip, large, largeFile)->Unit(benchmark::kMillisecond);

}  // namespace
