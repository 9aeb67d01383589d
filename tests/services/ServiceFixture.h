// A test with its own copy of the demo database, a headless screen and a services context.
#pragma once

#include "ado/Connection.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "services/Context.h"
#include "vb/Error.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace servicetest {

/// Each test gets a fresh copy of the demo database (made once per run, with
/// the twelve hand-made items) in a folder of its own, opened on `adocon`, and
/// a context on a TestUi whose state directory lies in that folder.
class ServiceTest : public ::testing::Test {
protected:
    ServiceTest();
    ~ServiceTest() override;

    /// The first field of the first row of a statement, as text ("<no row>", "<null>").
    std::string scalar(std::string_view sql) const;

    std::filesystem::path folder;
    ado::Connection adocon;
    forms::TestUi ui;
    forms::Screen screen{ui};
    services::Context context;
};

/// Runs `body` and returns the vb::Error it raised; fails the test when it raised none.
template <class Body> vb::Error errorOf(Body &&body) {
    try {
        body();
    } catch (const vb::Error &e) {
        return e;
    }
    ADD_FAILURE() << "no vb::Error was raised";
    return vb::Error(0, "", "");
}

} // namespace servicetest
