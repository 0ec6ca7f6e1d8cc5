#pragma once

#include "Analysis.h"
#include "FfmpegPtr.h"

#include <QString>

// The file an export writes. It is written under a temporary name in the destination's
// folder and takes the destination's name only in commit(), so a failed or cancelled
// export, which destroys the object without committing, leaves no file behind.
class OutputFile {
public:
    // Sets up the container; touches no file. A destination that is a folder is refused.
    OutputFile(const QString& destination, OutputContainer container);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    AVFormatContext* context() const { return m_context.get(); }
    // Encoders for this container must put their parameter sets in the stream header.
    bool needsGlobalHeader() const;
    AVStream* addStream();

    // Removes whatever is at the destination, creates the temporary file and writes the
    // container header. Streams must all be added before.
    void open();
    // Writes a packet whose times are in `timeBase`; the packet is left blank.
    void write(AVPacket* packet, AVRational timeBase);
    // Finishes the container and renames the temporary file to the destination.
    void commit();

    const QString& temporaryPath() const { return m_temporary; }

private:
    void createTemporaryFile();

    QString m_destination;
    QString m_temporary;
    OutputFormatContextPtr m_context;
    bool m_committed = false;
};
