#pragma once

#include <QString>
#include <exception>
#include <string>

// The engine's own findings. The message is built when asked for, in the language of the
// user interface at that time; only the payload is fixed when the error is made.
class TidleError : public std::exception {
public:
    enum class Kind { unreadable, exportFailed, noAudioTrack, noVideoTrack, allSilent, cancelled };

    static TidleError unreadable(const QString& payload) { return {Kind::unreadable, payload}; }
    static TidleError exportFailed(const QString& payload) { return {Kind::exportFailed, payload}; }
    static TidleError noAudioTrack() { return {Kind::noAudioTrack, {}}; }
    static TidleError noVideoTrack() { return {Kind::noVideoTrack, {}}; }
    static TidleError allSilent() { return {Kind::allSilent, {}}; }
    static TidleError cancelled() { return {Kind::cancelled, {}}; }

    Kind kind() const { return m_kind; }
    const QString& payload() const { return m_payload; }
    QString errorDescription() const;
    const char* what() const noexcept override;

private:
    TidleError(Kind kind, QString payload)
        : m_kind(kind)
        , m_payload(std::move(payload))
    {
    }

    Kind m_kind;
    QString m_payload;
    mutable std::string m_what;
};
