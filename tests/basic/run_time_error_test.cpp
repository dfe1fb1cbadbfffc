#include <gtest/gtest.h>

#include "basic/run_time_error.h"

namespace tolva::basic {
namespace {

TEST(RunTimeError, CarriesItsNumberAndTheStandardText) {
    const RunTimeError error(3021);
    EXPECT_EQ(error.number(), 3021);
    EXPECT_EQ(error.text(), "No current record.");
}

TEST(RunTimeError, TheDetailFillsTheOpenPlace) {
    EXPECT_EQ(RunTimeError(3024, "C:\\x.mdb").text(), "Could not find file 'C:\\x.mdb'.");
    EXPECT_EQ(RunTimeError(3061, "2").text(), "Too few parameters. Expected 2.");
    EXPECT_EQ(RunTimeError(3314, "Name").text(),
              "The field 'Name' cannot contain a Null value because the Required property for this field is "
              "set to True.  Enter a value in this field.");
}

TEST(RunTimeError, ADetailThatLooksLikeAnOpenPlaceStaysAsItIs) {
    EXPECT_EQ(RunTimeError(3024, "a|b").text(), "Could not find file 'a|b'.");
}

TEST(RunTimeError, ATextWithoutAnOpenPlaceIgnoresTheDetail) {
    EXPECT_EQ(RunTimeError(13, "anything").text(), "Type mismatch");
}

TEST(RunTimeError, MayBringATextOfItsOwn) {
    const RunTimeError error = RunTimeError::with_text(3049, "x.mdb, page 7: a row outside its page");
    EXPECT_EQ(error.number(), 3049);
    EXPECT_EQ(error.text(), "x.mdb, page 7: a row outside its page");
}

TEST(RunTimeError, AnUnknownNumberGetsTheGeneralText) {
    EXPECT_EQ(error_text(12345), "Application-defined or object-defined error");
}

} // namespace
} // namespace tolva::basic
