#include "FilePanels.h"

#include "BatchItem.h"
#include "Localization.h"

#include <QFileDialog>
#include <QStandardPaths>

namespace {

QString recordingsFilter()
{
    QStringList patterns;
    for (const QString& extension : supportedExtensions())
        patterns << QStringLiteral("*.") + extension << QStringLiteral("*.") + extension.toUpper();
    return localized("panel.open.filter").arg(patterns.join(QLatin1Char(' '))) +
           QStringLiteral(";;") + localized("panel.allFiles") + QStringLiteral(" (*)");
}

QUrl startFolder()
{
    return QUrl::fromLocalFile(QStandardPaths::writableLocation(QStandardPaths::MoviesLocation));
}

} // namespace

QList<QUrl> DialogFilePanels::chooseRecordings(QWidget* parent)
{
    return QFileDialog::getOpenFileUrls(parent, localized("panel.open.message"), startFolder(),
                                        recordingsFilter());
}

QList<QUrl> DialogFilePanels::chooseFolder(QWidget* parent)
{
    const QUrl folder = QFileDialog::getExistingDirectoryUrl(
        parent, localized("panel.openFolder.message"), startFolder());
    if (folder.isEmpty())
        return {};
    return {folder};
}

std::optional<QUrl> DialogFilePanels::chooseDestination(QWidget* parent, const QString& folder,
                                                        const QString& proposedName,
                                                        const QString& extension,
                                                        const QString& message)
{
    QFileDialog dialog(parent, message, folder);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(extension);
    dialog.setNameFilter(QStringLiteral("*.") + extension);
    dialog.selectFile(proposedName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedUrls().isEmpty())
        return std::nullopt;
    return dialog.selectedUrls().constFirst();
}
