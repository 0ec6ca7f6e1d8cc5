#include "OutputFile.h"

#include "ExportFailure.h"
#include "Localization.h"
#include "TidleError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

extern "C" {
#include <libavutil/dict.h>
}

namespace {

const char* muxerName(OutputContainer container)
{
    switch (container) {
    case OutputContainer::AppleM4A:
        return "ipod";
    case OutputContainer::MPEG4:
        return "mp4";
    case OutputContainer::QuickTimeMovie:
        return "mov";
    }
    return "mp4";
}

// FFmpeg would take "c:/x" or "a:b.mp4" for a protocol; an explicit one avoids that.
QByteArray ffmpegUrl(const QString& path)
{
    return "file:" + path.toUtf8();
}

// A hidden name beside the destination that still says what it will become, shortened
// where the destination's own name leaves no room for the prefix under the name limit.
QString temporaryName(const QString& destinationName, quint32 random)
{
    const QString prefix = QStringLiteral(".%1.").arg(random, 8, 16, QChar('0'));
    const QString full = prefix + destinationName;
    if (QFile::encodeName(full).size() <= NAME_MAX)
        return full;
    const QString suffix = QFileInfo(destinationName).suffix();
    if (suffix.isEmpty() || QFile::encodeName(prefix + suffix).size() > NAME_MAX)
        return prefix.chopped(1);
    return prefix + suffix;
}

// Flushes a file (or folder) to disk; the errno of a failure, or 0.
int syncToDisk(const QString& path, int flags)
{
    const int fd = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    if (fd < 0)
        return errno;
    const int result = ::fsync(fd) == 0 ? 0 : errno;
    ::close(fd);
    return result;
}

struct DictionaryDeleter {
    void operator()(AVDictionary* dictionary) const { av_dict_free(&dictionary); }
};

} // namespace

OutputFile::OutputFile(const QString& destination, OutputContainer container)
    : m_destination(QFileInfo(destination).absoluteFilePath())
{
    if (QFileInfo(m_destination).isDir())
        throwExportFailure("choosing the destination", AVERROR(EISDIR));
    AVFormatContext* raw = nullptr;
    checkExportStep(avformat_alloc_output_context2(&raw, nullptr, muxerName(container), nullptr),
                    "setting up the container");
    m_context.reset(raw);
}

OutputFile::~OutputFile()
{
    m_context.reset(); // closes the file before it is removed
    if (!m_committed && !m_temporary.isEmpty())
        QFile::remove(m_temporary);
}

bool OutputFile::needsGlobalHeader() const
{
    return m_context->oformat->flags & AVFMT_GLOBALHEADER;
}

AVStream* OutputFile::addStream()
{
    AVStream* stream = avformat_new_stream(m_context.get(), nullptr);
    if (!stream)
        throw TidleError::exportFailed(localized("diag.composition"));
    return stream;
}

void OutputFile::createTemporaryFile()
{
    const QFileInfo destination(m_destination);
    const QDir folder = destination.absoluteDir();
    // Hidden, and created exclusively so no other file is ever truncated; 0666 lets the
    // umask decide the final permissions as for any new file.
    for (int attempt = 0; attempt < 100; ++attempt) {
        const QString path = folder.filePath(
            temporaryName(destination.fileName(), QRandomGenerator::global()->generate()));
        const int fd = ::open(QFile::encodeName(path).constData(),
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0) {
            ::close(fd);
            m_temporary = path;
            return;
        }
        if (errno != EEXIST)
            throwExportFailure("creating the new file", AVERROR(errno));
    }
    throwExportFailure("creating the new file", AVERROR(EEXIST));
}

void OutputFile::open()
{
    QFile::remove(m_destination); // the caller chose to replace it; a failure shows below
    createTemporaryFile();
    const QByteArray url = ffmpegUrl(m_temporary);
    // The muxer reopens its own file by this name to move the index to the front.
    av_freep(&m_context->url);
    m_context->url = av_strdup(url.constData());
    if (!m_context->url)
        throwExportFailure("creating the new file", AVERROR(ENOMEM));
    checkExportStep(avio_open(&m_context->pb, url.constData(), AVIO_FLAG_WRITE),
                    "creating the new file");

    AVDictionary* raw = nullptr;
    checkExportStep(av_dict_set(&raw, "movflags", "+faststart", 0), "setting up the container");
    std::unique_ptr<AVDictionary, DictionaryDeleter> options(raw);
    raw = options.release();
    const int result = avformat_write_header(m_context.get(), &raw);
    options.reset(raw);
    checkExportStep(result, "writing the file header");
}

void OutputFile::write(AVPacket* packet, AVRational timeBase)
{
    av_packet_rescale_ts(packet, timeBase, m_context->streams[packet->stream_index]->time_base);
    packet->pos = -1;
    // Takes the packet's contents whatever the outcome.
    checkExportStep(av_interleaved_write_frame(m_context.get(), packet), "writing the new file");
}

void OutputFile::commit()
{
    checkExportStep(av_write_trailer(m_context.get()), "finishing the new file");
    checkExportStep(avio_closep(&m_context->pb), "finishing the new file");
    // The data reaches the disk before the name does, so a crash right after the rename
    // cannot leave an empty or partial file under the destination's name.
    if (const int error = syncToDisk(m_temporary, O_RDONLY))
        throwExportFailure("finishing the new file", AVERROR(error));
    if (std::rename(QFile::encodeName(m_temporary).constData(),
                    QFile::encodeName(m_destination).constData()) != 0)
        throwExportFailure("moving the new file into place", AVERROR(errno));
    m_committed = true;
    // The new name itself; the file is complete either way, so a folder that cannot be
    // synced (some network file systems) is no failure.
    syncToDisk(QFileInfo(m_destination).absolutePath(), O_RDONLY | O_DIRECTORY);
}
