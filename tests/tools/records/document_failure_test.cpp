// What a reader complains of, as data.

#include "records/document_failure.h"

#include <gtest/gtest.h>

namespace zarven::tool::document_failure_test {
namespace {

TEST(DocumentFailure, IsWithinAPlaceAndWhatHoldsIt) {
    const Misfit misfit{"f", "/leaves/10/width", "", ""};
    for (const char* place : {"/leaves", "/leaves/10", "/leaves/10/width"})
        EXPECT_TRUE(misfit.is_within(place)) << place;
    for (const char* place : {"/leaves/1", "/leaves/10/widths", "/branches", "/leaves/10/width/0"})
        EXPECT_FALSE(misfit.is_within(place)) << place;
    EXPECT_FALSE((Misfit{"f", "", "", ""}).is_within("/leaves"));
}

TEST(DocumentFailure, ThePrefixStandsBeforeTheMessage) {
    EXPECT_STREQ(DocumentFailure({"f", "/a", "b", "c"}, "p: ").what(), "p: f: /a: found b, expected c");
}

} // namespace
} // namespace zarven::tool::document_failure_test
