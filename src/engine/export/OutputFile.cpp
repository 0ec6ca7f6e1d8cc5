#include "OutputFile.h"

#include "ExportFailure.h"
#include "Localization.h"
#include "TidleError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <cerrno>
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
        // The name ends like the destination's, which the muxer looks at.
        const QString name = QStringLiteral(".%1.%2")
                                 .arg(QRandomGenerator::global()->generate(), 8, 16, QChar('0'))
                                 .arg(destination.fileName());
        const QString path = folder.filePath(name);
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
    if (std::rename(QFile::encodeName(m_temporary).constData(),
                    QFile::encodeName(m_destination).constData()) != 0)
        throwExportFailure("moving the new file into place", AVERROR(errno));
    m_committed = true;
}
