#pragma once

#include "AppModel.h"
#include "DocumentTestSupport.h"
#include "PreferenceSandbox.h"
#include "Prefs.h"

#include <QUrl>
#include <memory>
#include <vector>

inline void expectSegmentsNear(const std::vector<Segment>& actual,
                               const std::vector<Segment>& expected, double tolerance = 1e-9)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(actual[i].start, expected[i].start, tolerance) << "segment " << i;
        EXPECT_NEAR(actual[i].end, expected[i].end, tolerance) << "segment " << i;
    }
}

// A document model with a fake player over an empty preference store. Counts the analyses
// the model starts and the analyses it installs.
class ModelTest : public PreferenceSandboxTest {
protected:
    void TearDown() override { m_model.reset(); }

    // Stores `preferences` first, so that the model starts from them.
    void makeModel(const EditorPreferences& preferences = {})
    {
        Prefs::save(preferences);
        m_analysesStarted = 0;
        m_analysesInstalled = 0;
        m_model.reset();
        auto player = std::make_unique<FakePlayer>();
        m_player = player.get();
        m_model = std::make_unique<AppModel>(std::move(player));
        QObject::connect(m_model.get(), &AppModel::phaseChanged, m_model.get(), [this] {
            if (m_model->phase() == AppModel::Phase::analyzing)
                ++m_analysesStarted;
        });
        QObject::connect(m_model.get(), &AppModel::analysisChanged, m_model.get(), [this] {
            if (m_model->analysis())
                ++m_analysesInstalled;
        });
    }

    static EditorPreferences withPadding(double padding)
    {
        EditorPreferences preferences;
        preferences.settings.padding = padding;
        return preferences;
    }

    bool analysisEnded(int timeoutMs = 60000)
    {
        return waitUntil([this] { return m_model->phase() != AppModel::Phase::analyzing; },
                         timeoutMs);
    }

    // Loads `path` and waits until its analysis ends, one way or the other.
    bool loadAndWait(const QString& path)
    {
        m_model->load(QUrl::fromLocalFile(path));
        return analysisEnded();
    }

    // Changes one number of the settings the way an advanced slider does.
    void setPadding(double padding)
    {
        TidleSettings settings = m_model->settings();
        settings.padding = padding;
        m_model->setSettings(settings);
    }

    std::unique_ptr<AppModel> m_model;
    FakePlayer* m_player = nullptr;
    int m_analysesStarted = 0;
    int m_analysesInstalled = 0;
};
