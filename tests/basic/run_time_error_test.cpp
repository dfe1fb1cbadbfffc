#include <gtest/gtest.h>

#include <utility>

#include "basic/run_time_error.h"

namespace tolva::basic {
namespace {

TEST(RunTimeError, CarriesItsNumberAndTheStandardText) {
    const RunTimeError error(3021);
    EXPECT_EQ(error.number(), 3021);
    EXPECT_EQ(error.text(), "No current record.");
}

TEST(RunTimeError, SaysWhatTheEngineAndTheLanguageSay) {
    const std::pair<int, const char*> texts[] = {
        {5, "Invalid procedure call or argument"},
        {6, "Overflow"},
        {9, "Subscript out of range"},
        {11, "Division by zero"},
        {13, "Type mismatch"},
        {53, "File not found"},
        {62, "Input past end of file"},
        {75, "Path/File access error"},
        {76, "Path not found"},
        {91, "Object variable or With block variable not set"},
        {94, "Invalid use of Null"},
        {424, "Object required"},
        {482, "Printer error"},
        {3020, "Update or CancelUpdate without AddNew or Edit."},
        {3022,
         "The changes you requested to the table were not successful because they would create duplicate "
         "values in the index, primary key, or relationship.  Change the data in the field or fields "
         "that contain duplicate data, remove the index, or redefine the index to permit duplicate "
         "entries and try again."},
        {3047, "Record is too large."},
        {3058, "Index or primary key cannot contain a Null value."},
        {3163, "The field is too small to accept the amount of data you attempted to add.  Try inserting or "
               "pasting less data."},
        {3167, "Record is deleted."},
        {3265, "Item not found in this collection."},
        {3315, "Field 'x' cannot be a zero-length string."},
        {3343, "Unrecognized database format 'x'."},
        {3421, "Data type conversion error."},
        {3464, "Data type mismatch in criteria expression."},
    };
    for (const auto& [number, text] : texts)
        EXPECT_EQ(error_text(number, "x"), text);
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
