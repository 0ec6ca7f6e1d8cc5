#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

class QWidget;

// The open and save dialogs, behind an interface so that tests answer them without a person.
class FilePanels {
public:
    virtual ~FilePanels() = default;

    // Recordings to open; empty when the user cancels.
    virtual QList<QUrl> chooseRecordings(QWidget* parent) = 0;
    // A folder for the batch; empty when the user cancels.
    virtual QList<QUrl> chooseFolder(QWidget* parent) = 0;
    // Where to write the new file, starting in `folder` with `proposedName`; none on cancel.
    virtual std::optional<QUrl> chooseDestination(QWidget* parent, const QString& folder,
                                                  const QString& proposedName,
                                                  const QString& extension,
                                                  const QString& message) = 0;
};

// The desktop's own dialogs (through the portal where there is one).
class DialogFilePanels : public FilePanels {
public:
    QList<QUrl> chooseRecordings(QWidget* parent) override;
    QList<QUrl> chooseFolder(QWidget* parent) override;
    std::optional<QUrl> chooseDestination(QWidget* parent, const QString& folder,
                                          const QString& proposedName, const QString& extension,
                                          const QString& message) override;
};
