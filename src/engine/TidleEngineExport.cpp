#include "TidleEngine.h"

#include "Exporter.h"
#include "Localization.h"
#include "TidleError.h"

#include <QFile>
#include <sys/stat.h>

namespace {

// However the two paths are written (relative, "/./", symbolic links, hard links), they
// name the same file when they lead to the same inode of the same device.
bool isSameFile(const QString& input, const QString& output)
{
    struct stat in {};
    struct stat out {};
    if (::stat(QFile::encodeName(input).constData(), &in) != 0 ||
        ::stat(QFile::encodeName(output).constData(), &out) != 0)
        return false;
    return in.st_dev == out.st_dev && in.st_ino == out.st_ino;
}

} // namespace

void TidleEngine::encode(const QString& input, const QString& output, const Analysis& analysis,
                         const TidleSettings& settings, const ProgressCallback& onProgress)
{
    m_cancelRequested.store(false);
    if (isSameFile(input, output))
        throw TidleError::exportFailed(localized("diag.sameFile"));
    Exporter::Request request;
    request.input = input;
    request.destination = output;
    request.container = analysis.outputFileType;
    request.keeps = analysis.keeps;
    request.frameAccurate = settings.frameAccurate;
    Exporter::run(request, m_cancelRequested, onProgress);
}
