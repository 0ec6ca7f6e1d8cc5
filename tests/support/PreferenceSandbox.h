#pragma once

#include <QString>
#include <gtest/gtest.h>

// Tests that read or write preferences derive from this: the store lives in a temporary
// folder of the test process (never the user's own ~/.config) and starts empty in every test.
class PreferenceSandboxTest : public testing::Test {
protected:
    void SetUp() override;
    // The file the store keeps its data in, for tests that look at what was written.
    static QString storeFile();
};
