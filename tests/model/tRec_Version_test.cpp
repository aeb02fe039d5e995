// The version that headers and library tell. That it is the one of everything else,
// tests/consumers/versions.sh says.

#include "tRec_Version.h"

#include <gtest/gtest.h>

#include <string>

namespace tRec_Version_test {

namespace {

std::string esperada() {
    return std::to_string(RECALCULO_VERSION_MAJOR) + "." + std::to_string(RECALCULO_VERSION_MINOR) + "." +
           std::to_string(RECALCULO_VERSION_PATCH);
}

TEST(tRec_Version, TheTextIsMadeOfTheNumbers) {
    EXPECT_EQ(RECALCULO_VERSION, esperada());
}

TEST(tRec_Version, TheLibraryTellsTheVersionItWasBuiltWith) {
    EXPECT_EQ(zarven::versionTexto(), esperada());
    EXPECT_EQ(zarven::versionNumero(), RECALCULO_VERSION_NUMBER);
}

TEST(tRec_Version, TheNumberOrdersVersions) {
    EXPECT_EQ(RECALCULO_VERSION_NUMBER / 10000, RECALCULO_VERSION_MAJOR);
    EXPECT_EQ(RECALCULO_VERSION_NUMBER / 100 % 100, RECALCULO_VERSION_MINOR);
    EXPECT_EQ(RECALCULO_VERSION_NUMBER % 100, RECALCULO_VERSION_PATCH);
}

} // namespace

} // namespace tRec_Version_test
