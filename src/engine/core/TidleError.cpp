#include "TidleError.h"

#include "Localization.h"

QString TidleError::errorDescription() const
{
    switch (m_kind) {
    case Kind::unreadable:
        return localized("error.unreadable").arg(m_payload);
    case Kind::exportFailed:
        return localized("error.exportFailed").arg(m_payload);
    case Kind::noAudioTrack:
        return localized("error.noAudio");
    case Kind::noVideoTrack:
        return localized("error.noVideo");
    case Kind::allSilent:
        return localized("error.allSilent");
    case Kind::cancelled:
        return localized("error.cancelled");
    }
    return {};
}

const char* TidleError::what() const noexcept
{
    try {
        m_what = errorDescription().toStdString();
    } catch (...) {
        return "TidleError";
    }
    return m_what.c_str();
}
