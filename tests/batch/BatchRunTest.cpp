#include "BatchModel.h"
#include "Completion.h"
#include "Ellipsize.h"
#include "Fixtures.h"
#include "Localization.h"
#include "PreferenceSandbox.h"
#include "Recordings.h"
#include "Stats.h"
#include "TidleEngine.h"
#include "UserMessage.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <future>
#include <map>
#include <mutex>

// Readable failure messages.
static void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

// The presets all pad cuts by at least 0.1 s, which keeps something of any quiet file long
// enough to hold a pause; only a file shorter than the shortest keep has nothing to keep.
QString quietBlip()
{
    return Fixtures::makeWithFfmpeg(
        "batch-quiet-blip.wav", {"-f", "lavfi", "-i", "anullsrc=r=16000:cl=mono", "-t", "0.04"});
}

bool waitForEndOfRun(BatchModel& model, qint64 timeoutMs = 240000)
{
    QSignalSpy running(&model, &BatchModel::isRunningChanged);
    QElapsedTimer clock;
    clock.start();
    while (model.isRunning()) {
        const qint64 left = timeoutMs - clock.elapsed();
        if (left <= 0)
            return false;
        running.wait(int(left));
    }
    return true;
}

const BatchItem* itemNamed(const BatchModel& model, const QString& name)
{
    for (const BatchItem& item : model.items()) {
        if (item.url.fileName() == name)
            return &item;
    }
    return nullptr;
}

class BatchRun : public PreferenceSandboxTest {
protected:
    void SetUp() override
    {
        PreferenceSandboxTest::SetUp();
        ASSERT_TRUE(m_folder.isValid());
        Completion::setDelivery([this](const QString& title, const QString& body) {
            m_notifications.append({title, body});
        });
        QObject::connect(&m_model, &BatchModel::itemStatusChanged, &m_model, [this](int index) {
            const BatchItem& item = m_model.items()[index];
            m_history[item.url.fileName()].append(item.status);
        });
    }
    void TearDown() override { Completion::setDelivery({}); }

    QString place(const QString& fixture, const QString& name)
    {
        const QString target = QDir(m_folder.path()).filePath(name);
        EXPECT_TRUE(QFile::copy(fixture, target)) << name.toStdString();
        return target;
    }
    QString filePath(const QString& name) const { return QDir(m_folder.path()).filePath(name); }
    QStringList folderEntries() const
    {
        QStringList names = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
        names.sort();
        return names;
    }
    // The folder holds `inputs` and `written`, nothing else and nothing half-made.
    void expectFolder(QStringList inputs, const QString& written) const
    {
        inputs << written;
        inputs.sort();
        EXPECT_EQ(folderEntries(), inputs);
    }

    QTemporaryDir m_folder;
    BatchModel m_model;
    QList<QPair<QString, QString>> m_notifications;
    std::map<QString, QList<BatchItem::Status>> m_history;
};

template <typename T> bool is(const BatchItem::Status& status)
{
    return std::holds_alternative<T>(status);
}

} // namespace

TEST_F(BatchRun, oneRunOverAFolderMeetsEveryOutcome)
{
    const QString speech = place(Recordings::speechWithPauses(), "speech.wav");
    // Gives the same output name: both end done with the one file, written twice.
    place(Recordings::speechWithPauses(), "speech.WAV");
    place(Recordings::steadyTone(), "tone.wav");
    place(quietBlip(), "blip.wav");
    place(Recordings::videoWithoutSound(), "mute.mp4");
    const QString broken = place(Recordings::brokenFile(), "broken.mp4");
    const QStringList inputs = folderEntries();
    QSignalSpy running(&m_model, &BatchModel::isRunningChanged);
    m_model.run();
    EXPECT_EQ(running.count(), 0) << "an empty list ran";

    m_model.setItems({QUrl::fromLocalFile(m_folder.path())});
    ASSERT_EQ(m_model.items().size(), 6);
    m_model.run();
    EXPECT_TRUE(m_model.isRunning());
    // While running, the list stays as it is.
    const QList<BatchItem> during = m_model.items();
    m_model.setItems({QUrl::fromLocalFile(speech)});
    m_model.clear();
    m_model.run();
    ASSERT_EQ(m_model.items().size(), 6);
    EXPECT_EQ(m_model.items()[0].id, during[0].id);
    ASSERT_TRUE(waitForEndOfRun(m_model));
    EXPECT_EQ(running.count(), 2);

    // Written beside the input under the default name, shorter by the pause.
    const QString output = filePath("speech (no pauses).m4a");
    for (const char* name : {"speech.WAV", "speech.wav"}) {
        const BatchItem* done = itemNamed(m_model, name);
        ASSERT_NE(done, nullptr);
        ASSERT_TRUE(is<BatchItem::Done>(done->status)) << name;
        EXPECT_EQ(std::get<BatchItem::Done>(done->status).output, QUrl::fromLocalFile(output));
    }
    const auto& result = std::get<BatchItem::Done>(itemNamed(m_model, "speech.wav")->status);
    const double inputSeconds = Fixtures::probeDuration(speech);
    const double removed = result.removedFraction * inputSeconds;
    // The 1.5 s joined between the sentences, less the padding, and any quiet espeak-ng
    // leaves at the ends of its sentences.
    EXPECT_GT(removed, 1.0);
    EXPECT_LT(removed, inputSeconds / 2);
    ASSERT_TRUE(QFile::exists(output));
    EXPECT_NEAR(Fixtures::probeDuration(output), inputSeconds - removed, 0.1);
    const QJsonArray streams = Fixtures::probe(output).value("streams").toArray();
    ASSERT_EQ(streams.size(), 1);
    EXPECT_EQ(streams[0].toObject().value("codec_type").toString(), "audio");
    EXPECT_NEAR(Stats::totalSecondsSaved(), 2 * removed, 0.01);

    const struct {
        const char* name;
        const char* reasonKey;
    } skips[] = {{"tone.wav", "batch.skip.noPauses"},
                 {"blip.wav", "batch.skip.allSilent"},
                 {"mute.mp4", "batch.skip.noAudio"}};
    for (const auto& skip : skips) {
        const BatchItem* item = itemNamed(m_model, skip.name);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->status, BatchItem::Status(BatchItem::Skipped{localized(skip.reasonKey)}))
            << skip.name;
    }

    const BatchItem* failed = itemNamed(m_model, "broken.mp4");
    ASSERT_NE(failed, nullptr);
    ASSERT_TRUE(is<BatchItem::Failed>(failed->status));
    // The same text the engine gives for the file, cut for the list.
    QString direct;
    try {
        TidleEngine().analyze(broken, BatchModel::runSettings(Sensitivity::standard));
    } catch (const std::exception& error) {
        direct = userMessage(error);
    }
    ASSERT_FALSE(direct.isEmpty());
    EXPECT_EQ(std::get<BatchItem::Failed>(failed->status).reason, ellipsize(direct, 80));

    expectFolder(inputs, "speech (no pauses).m4a");

    EXPECT_EQ(m_model.summary(), localizedCount("batch.summary.files", 6) + " · " +
                                     localizedCount("batch.summary.done", 2) + " · " +
                                     localizedCount("batch.summary.skipped", 4));
    ASSERT_EQ(m_notifications.size(), 1);
    EXPECT_EQ(m_notifications[0].first, localized("notify.batch.title"));
    EXPECT_EQ(m_notifications[0].second, localizedCount("notify.batch.body", 2));

    // Each item moved only forward, and reached the list in the order it happened.
    const QList<BatchItem::Status>& speechSteps = m_history["speech.wav"];
    ASSERT_GE(speechSteps.size(), 3);
    EXPECT_TRUE(is<BatchItem::Analyzing>(speechSteps.first()));
    EXPECT_TRUE(is<BatchItem::Done>(speechSteps.last()));
    double lastFraction = -1.0;
    for (int i = 1; i + 1 < speechSteps.size(); ++i) {
        ASSERT_TRUE(is<BatchItem::Encoding>(speechSteps[i]));
        const double fraction = std::get<BatchItem::Encoding>(speechSteps[i]).progress;
        EXPECT_GE(fraction, lastFraction);
        lastFraction = fraction;
    }
    EXPECT_EQ(lastFraction, 1.0);
    for (const char* name : {"tone.wav", "blip.wav", "mute.mp4", "broken.mp4"}) {
        const auto& steps = m_history[name];
        ASSERT_EQ(steps.size(), 2) << name;
        EXPECT_TRUE(is<BatchItem::Analyzing>(steps[0])) << name;
    }

    // A second run of the same list does every file again; once idle, the list clears.
    m_history.clear();
    m_model.run();
    ASSERT_TRUE(waitForEndOfRun(m_model));
    EXPECT_TRUE(is<BatchItem::Analyzing>(m_history["speech.wav"].first()));
    EXPECT_TRUE(is<BatchItem::Done>(m_history["speech.wav"].last()));
    EXPECT_EQ(m_notifications.size(), 2);
    m_model.clear();
    EXPECT_TRUE(m_model.items().isEmpty());
}

TEST_F(BatchRun, stopDuringTheSecondOfFiveFilesEndsTheRunWithoutANotification)
{
    QList<QUrl> files = {QUrl::fromLocalFile(place(Recordings::speechWithPauses(), "a.wav")),
                         QUrl::fromLocalFile(place(Recordings::longVideo(), "b.mp4"))};
    for (const char* name : {"c.wav", "d.wav", "e.wav"})
        files.append(QUrl::fromLocalFile(place(Recordings::steadyTone(), name)));
    const QStringList inputs = folderEntries();
    m_model.setItems(files);
    ASSERT_EQ(m_model.items().size(), 5);

    // Stop while the second file's export is under way.
    QObject::connect(&m_model, &BatchModel::itemStatusChanged, &m_model, [this](int index) {
        const auto& status = m_model.items()[index].status;
        if (index == 1 && is<BatchItem::Encoding>(status) &&
            std::get<BatchItem::Encoding>(status).progress < 1.0)
            m_model.stop();
    });
    m_model.run();
    ASSERT_TRUE(waitForEndOfRun(m_model));

    const QList<BatchItem>& items = m_model.items();
    EXPECT_TRUE(is<BatchItem::Done>(items[0].status));
    EXPECT_EQ(items[1].status,
              BatchItem::Status(BatchItem::Failed{localized("batch.fail.cancelled")}));
    for (int i = 2; i < 5; ++i)
        EXPECT_TRUE(is<BatchItem::Waiting>(items[i].status)) << i;
    EXPECT_TRUE(m_notifications.isEmpty());
    expectFolder(inputs, "a (no pauses).m4a");
}

TEST_F(BatchRun, aLongFailureTextIsCutAndTheInputIsNeverWrittenOver)
{
    const QString speech = place(Recordings::speechWithPauses(), "speech.wav");
    // A link where the output would go leads back to the input: the engine refuses to write,
    // with a text longer than the list shows.
    ASSERT_TRUE(QFile::link(speech, QDir(m_folder.path()).filePath("speech (no pauses).m4a")));
    QFile original(speech);
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    const QByteArray before = original.readAll();
    original.close();

    m_model.setItems({QUrl::fromLocalFile(speech)});
    m_model.run();
    ASSERT_TRUE(waitForEndOfRun(m_model));

    const QString full = localized("error.exportFailed").arg(localized("diag.sameFile"));
    ASSERT_GT(full.size(), 80);
    EXPECT_EQ(m_model.items()[0].status,
              BatchItem::Status(BatchItem::Failed{full.left(80) + QChar(0x2026)}));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    EXPECT_EQ(original.readAll(), before);
    EXPECT_TRUE(m_notifications.isEmpty());
    EXPECT_EQ(Stats::totalSecondsSaved(), 0.0);
}

TEST_F(BatchRun, aModelDestroyedMidRunStopsItsFileAndLeavesNothingBehind)
{
    const QString input = place(Recordings::longVideo(), "long.mp4");
    {
        auto model = std::make_unique<BatchModel>();
        model->setItems({QUrl::fromLocalFile(input)});
        bool encoding = false;
        QObject::connect(model.get(), &BatchModel::itemStatusChanged, [&](int) {
            encoding = encoding || is<BatchItem::Encoding>(model->items()[0].status);
        });
        model->run();
        QSignalSpy changes(model.get(), &BatchModel::itemStatusChanged);
        QElapsedTimer clock;
        clock.start();
        while (!encoding && model->isRunning() && clock.elapsed() < 120000)
            changes.wait(1000);
        ASSERT_TRUE(encoding);
        model.reset();
    }
    // Whatever the worker still posted must not run against the dead model.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_notifications.isEmpty());
    EXPECT_EQ(folderEntries(), QStringList{"long.mp4"});
}

// The engine's analysis of the file with the plan replaced: the run decides on the numbers
// alone, and what it writes follows the plan.
TEST_F(BatchRun, aFileIsWrittenOnlyWhenMoreThanAHundredthOfASecondGoes)
{
    const struct {
        const char* name;
        double duration;
        std::vector<Segment> keeps;
        bool written;
    } rows[] = {
        {"exactly.wav", 0.02, {{0.0, 0.01}}, false},
        {"more-kept-than-there-is.wav", 3.0, {{0.0, 3.5}}, false},
        {"just-over.wav", 3.0, {{0.0, 2.989}}, true},
    };
    QList<QUrl> files;
    for (const auto& row : rows)
        files.append(QUrl::fromLocalFile(place(Recordings::steadyTone(), row.name)));
    m_model.setAnalyzer(
        [&rows](TidleEngine& engine, const QString& path, const TidleSettings& settings) {
            Analysis analysis = engine.analyze(path, settings);
            for (const auto& row : rows) {
                if (path.endsWith(QLatin1String(row.name))) {
                    analysis.duration = row.duration;
                    analysis.keeps = row.keeps;
                }
            }
            return analysis;
        });
    m_model.setItems(files);
    m_model.run();
    ASSERT_TRUE(waitForEndOfRun(m_model));

    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const BatchItem* item = itemNamed(m_model, row.name);
        ASSERT_NE(item, nullptr);
        const QString output =
            filePath(QFileInfo(row.name).completeBaseName() + " (no pauses).m4a");
        EXPECT_EQ(QFile::exists(output), row.written);
        if (row.written) {
            ASSERT_TRUE(is<BatchItem::Done>(item->status));
            EXPECT_NEAR(Fixtures::probeDuration(output), 2.989, 0.03);
        } else {
            EXPECT_EQ(item->status,
                      BatchItem::Status(BatchItem::Skipped{localized("batch.skip.noPauses")}));
        }
    }
}

// The first file's analysis waits until the preset has changed: the rest of the run still
// uses the preset it started with.
TEST_F(BatchRun, aPresetChosenMidRunAppliesToTheNextRun)
{
    QList<QUrl> files;
    for (const char* name : {"a.wav", "b.wav", "c.wav"})
        files.append(QUrl::fromLocalFile(place(Recordings::steadyTone(), name)));
    std::promise<void> presetChanged;
    std::shared_future<void> changed = presetChanged.get_future().share();
    std::mutex mutex;
    std::vector<double> thresholds;
    m_model.setAnalyzer(
        [&](TidleEngine& engine, const QString& path, const TidleSettings& settings) {
            // Once set, the future no longer holds up the next run.
            if (path.endsWith("a.wav"))
                changed.wait();
            const std::lock_guard lock(mutex);
            thresholds.push_back(settings.thresholdDB);
            return engine.analyze(path, settings);
        });
    m_model.setSensitivity(Sensitivity::delicate);
    m_model.setItems(files);
    bool asked = false;
    QObject::connect(&m_model, &BatchModel::itemStatusChanged, &m_model, [&](int index) {
        if (index == 0 && !asked) {
            asked = true;
            m_model.setSensitivity(Sensitivity::aggressive);
            presetChanged.set_value();
        }
    });
    m_model.run();
    ASSERT_TRUE(waitForEndOfRun(m_model));
    ASSERT_TRUE(asked);
    EXPECT_EQ(thresholds, std::vector<double>(3, -45.0));

    thresholds.clear();
    m_model.run();
    ASSERT_TRUE(waitForEndOfRun(m_model));
    EXPECT_EQ(thresholds, std::vector<double>(3, -30.0));
}
