#include "basic/run_time_error.h"

#include <algorithm>
#include <iterator>

namespace tolva::basic {

namespace {

struct ErrorText {
    int number;
    /// The one place that a text leaves open is marked by "|", which no text holds otherwise.
    const char* text;
};

constexpr ErrorText error_texts[] = {
    // The language's own.
    {5, "Invalid procedure call or argument"},
    {6, "Overflow"},
    {7, "Out of memory"},
    {9, "Subscript out of range"},
    {11, "Division by zero"},
    {13, "Type mismatch"},
    {52, "Bad file name or number"},
    {53, "File not found"},
    {57, "Device I/O error"},
    {58, "File already exists"},
    {61, "Disk full"},
    {62, "Input past end of file"},
    {63, "Bad record number"},
    {70, "Permission denied"},
    {75, "Path/File access error"},
    {76, "Path not found"},
    {91, "Object variable or With block variable not set"},
    {93, "Invalid pattern string"},
    {94, "Invalid use of Null"},
    {321, "Invalid file format"},
    {424, "Object required"},
    {482, "Printer error"},

    // The engine's.
    {3020, "Update or CancelUpdate without AddNew or Edit."},
    {3021, "No current record."},
    {3022, "The changes you requested to the table were not successful because they would create duplicate "
           "values in the index, primary key, or relationship.  Change the data in the field or fields that "
           "contain duplicate data, remove the index, or redefine the index to permit duplicate entries and "
           "try again."},
    {3024, "Could not find file '|'."},
    {3027, "Cannot update.  Database or object is read-only."},
    {3031, "Not a valid password."},
    {3045, "Could not use '|'; file already in use."},
    {3047, "Record is too large."},
    {3049,
     "Cannot open database '|'.  It may not be a database that your application recognizes, or the file "
     "may be corrupt."},
    {3058, "Index or primary key cannot contain a Null value."},
    {3061, "Too few parameters. Expected |."},
    {3067, "Query input must contain at least one table or query."},
    {3075, "Syntax error (missing operator) in query expression '|'."},
    {3078, "The Microsoft Jet database engine cannot find the input table or query '|'.  Make sure it exists "
           "and that its name is spelled correctly."},
    {3085, "Undefined function '|' in expression."},
    {3126, "Invalid bracketing of name '|'."},
    {3129, "Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or 'UPDATE'."},
    {3131, "Syntax error in FROM clause."},
    {3138, "Syntax error in ORDER BY clause."},
    {3141, "The SELECT statement includes a reserved word or an argument name that is misspelled or missing, "
           "or the punctuation is incorrect."},
    {3142, "Characters found after end of SQL statement."},
    {3163, "The field is too small to accept the amount of data you attempted to add.  Try inserting or "
           "pasting less data."},
    {3167, "Record is deleted."},
    {3265, "Item not found in this collection."},
    {3314, "The field '|' cannot contain a Null value because the Required property for this field is set to "
           "True.  Enter a value in this field."},
    {3315, "Field '|' cannot be a zero-length string."},
    {3343, "Unrecognized database format '|'."},
    {3360, "Query is too complex."},
    {3421, "Data type conversion error."},
    {3464, "Data type mismatch in criteria expression."},
};

} // namespace

std::string error_text(int number, const std::string& detail) {
    const auto found = std::find_if(std::begin(error_texts), std::end(error_texts),
                                    [number](const ErrorText& entry) { return entry.number == number; });
    if (found == std::end(error_texts))
        return "Application-defined or object-defined error";
    std::string text = found->text;
    if (const auto place = text.find('|'); place != std::string::npos)
        text.replace(place, 1, detail);
    return text;
}

RunTimeError::RunTimeError(int number, const std::string& detail)
    : std::runtime_error(error_text(number, detail)), number_(number) {}

RunTimeError::RunTimeError(int number, const std::string& text, bool)
    : std::runtime_error(text), number_(number) {}

RunTimeError RunTimeError::with_text(int number, const std::string& text) {
    return RunTimeError(number, text, true);
}

} // namespace tolva::basic
