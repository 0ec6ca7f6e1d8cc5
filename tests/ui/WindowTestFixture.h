#pragma once

#include "AppModel.h"
#include "BatchModel.h"
#include "Completion.h"
#include "ContentView.h"
#include "DesktopFiles.h"
#include "DocumentTestSupport.h"
#include "FilePanels.h"
#include "HushpaneApp.h"
#include "MainWindow.h"
#include "PreferenceSandbox.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>
#include <memory>

// Dialogs answered by the test: what the user would pick, and what the dialogs were asked.
class FakePanels : public FilePanels {
public:
    QList<QUrl> chooseRecordings(QWidget*) override { return {}; }
    QList<QUrl> chooseFolder(QWidget*) override { return {}; }
    std::optional<QUrl> chooseDestination(QWidget*, const QString& startFolder, const QString& name,
                                          const QString& extension, const QString& message) override
    {
        askedFolder = startFolder;
        askedName = name;
        askedExtension = extension;
        askedMessage = message;
        return destination;
    }

    std::optional<QUrl> destination;
    QString askedFolder;
    QString askedName;
    QString askedExtension;
    QString askedMessage;
};

// The whole windowed application over a fake player and an empty preference store; the
// desktop's notifications and file manager are replaced by lists of what they were given.
class WindowTest : public PreferenceSandboxTest {
protected:
    void SetUp() override
    {
        PreferenceSandboxTest::SetUp();
        ASSERT_TRUE(m_folder.isValid());
        Completion::setDelivery(
            [this](const QString& title, const QString&) { announcements << title; });
        DesktopFiles::setUrlOpener([this](const QUrl& url) { opened << url; });
        auto player = std::make_unique<FakePlayer>();
        m_player = player.get();
        m_app = std::make_unique<HushpaneApp>(std::move(player));
        auto panels = std::make_unique<FakePanels>();
        m_panels = panels.get();
        content()->setFilePanels(std::move(panels));
    }
    void TearDown() override
    {
        m_app.reset();
        Completion::setDelivery({});
        DesktopFiles::setUrlOpener({});
    }

    ContentView* content() const { return m_app->window().content(); }
    AppModel& model() const { return m_app->model(); }
    BatchModel& batch() const { return m_app->batch(); }

    // A copy of `source` named `name` in the test's own folder.
    QUrl copyInto(const QString& source, const QString& name)
    {
        const QString target = m_folder.filePath(name);
        EXPECT_TRUE(QFile::copy(source, target));
        return QUrl::fromLocalFile(target);
    }

    // Routes `path` as the open dialog would, and waits until its analysis has ended.
    bool openAndWait(const QString& path)
    {
        content()->accept({QUrl::fromLocalFile(path)});
        return waitUntil([this] {
            return model().phase() != AppModel::Phase::analyzing &&
                   model().phase() != AppModel::Phase::idle;
        });
    }

    // Drags `files` over the window and, if it takes them, drops them; returns whether it did.
    bool drop(const QList<QUrl>& files)
    {
        QMimeData data;
        data.setUrls(files);
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(content(), &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(content(), &event);
        return event.isAccepted();
    }

    QTemporaryDir m_folder;
    std::unique_ptr<HushpaneApp> m_app;
    FakePlayer* m_player = nullptr;
    FakePanels* m_panels = nullptr;
    QStringList announcements;
    QList<QUrl> opened;
};
