#include "PreferenceSandbox.h"

#include "PreferenceStore.h"

#include <QTemporaryDir>
#include <memory>

namespace {

// QSettings fixes the configuration folder the first time it is used, so the folder is
// chosen once per process, before the first test.
class PreferenceSandbox : public testing::Environment {
public:
    void SetUp() override
    {
        m_folder = std::make_unique<QTemporaryDir>();
        ASSERT_TRUE(m_folder->isValid());
        qputenv("XDG_CONFIG_HOME", m_folder->path().toLocal8Bit());
    }
    void TearDown() override { m_folder.reset(); }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

testing::Environment* const sandbox = testing::AddGlobalTestEnvironment(new PreferenceSandbox);

} // namespace

void PreferenceSandboxTest::SetUp()
{
    PreferenceStore store;
    store.clear();
    store.sync();
}

QString PreferenceSandboxTest::storeFile()
{
    return PreferenceStore().fileName();
}
