#pragma once

#include <QString>
#include <QUrl>
#include <QUuid>
#include <variant>

// One file of the batch list. Only its status changes after it is made.
struct BatchItem {
    struct Waiting {
        bool operator==(const Waiting&) const = default;
    };
    struct Analyzing {
        bool operator==(const Analyzing&) const = default;
    };
    struct Encoding {
        double progress = 0.0;
        bool operator==(const Encoding&) const = default;
    };
    struct Done {
        double removedFraction = 0.0;
        QUrl output;
        bool operator==(const Done&) const = default;
    };
    struct Skipped {
        QString reason;
        bool operator==(const Skipped&) const = default;
    };
    struct Failed {
        QString reason;
        bool operator==(const Failed&) const = default;
    };
    using Status = std::variant<Waiting, Analyzing, Encoding, Done, Skipped, Failed>;

    QUuid id = QUuid::createUuid();
    QUrl url;
    Status status = Waiting{};

    bool operator==(const BatchItem&) const = default;
};

// The lower-case extensions the batch and the window accept.
const QStringList& supportedExtensions();
// The location's extension (after the last dot of its file name), lower-cased, is supported.
bool isSupported(const QUrl& location);
