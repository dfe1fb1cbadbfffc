#include "data/commands.h"

#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "dao/database.h"
#include "data/backup.h"
#include "data/schema_text.h"
#include "data/table_text.h"
#include "jet/check.h"
#include "jet/database.h"
#include "jet/rebuild.h"
#include "sql/select.h"

namespace tolva::data {

using basic::RunTimeError;

namespace {

using Arguments = std::vector<std::string>;

std::string counted(std::size_t rows) {
    return std::to_string(rows) + (rows == 1 ? " row" : " rows");
}

// Reading

/// Prints rows, many at a time: a stream takes its time over each of many small texts.
class RowPrinter {
  public:
    RowPrinter(std::ostream& out, const jet::TableSchema& schema, std::vector<std::size_t> columns)
        : out_(out), schema_(schema), columns_(std::move(columns)), values_(schema.columns.size()) {
        std::string_view separator;
        for (const std::size_t column : columns_) {
            text_ += separator;
            text_ += escape(schema.columns[column].name);
            separator = "\t";
        }
        text_ += '\n';
    }

    /// Whole or, when a column cannot be read, not at all.
    void print(const jet::RowReader& row) {
        const std::size_t begin = text_.size();
        try {
            for (const std::size_t column : columns_) {
                row.read_into(column, values_[column]);
                append_field(text_, schema_.columns[column], values_[column]);
                text_ += '\t';
            }
        } catch (...) {
            text_.resize(begin);
            throw;
        }
        if (text_.size() > begin)
            text_.back() = '\n';
        if (text_.size() >= much)
            flush();
    }

    void flush() {
        out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
        text_.clear();
    }

  private:
    static constexpr std::size_t much = std::size_t{1} << 16;

    std::ostream& out_;
    const jet::TableSchema& schema_;
    std::vector<std::size_t> columns_;
    jet::Row values_;
    std::string text_;
};

void tell(std::ostream& err, const std::string& text) {
    err << "tolva-data: " << text << '\n';
}

std::vector<std::size_t> all_columns(const jet::TableSchema& schema) {
    std::vector<std::size_t> columns(schema.columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        columns[i] = i;
    return columns;
}

ExitCode tables(Surroundings& with, const Arguments& arguments) {
    const auto file = jet::Database::open_to_read(with.disk, arguments[0]);
    with.out << "table\trows\tcolumns\tindexes\n";
    for (const std::string& name : file->table_names()) {
        const jet::Table& table = file->table(name);
        with.out << escape(name) << '\t' << table.row_count() << '\t' << table.schema().columns.size() << '\t'
                 << table.schema().indexes.size() << '\n';
    }
    return exit_success;
}

ExitCode schema(Surroundings& with, const Arguments& arguments) {
    const auto file = jet::Database::open_to_read(with.disk, arguments[0]);
    std::vector<jet::TableSchema> schemas;
    for (const std::string& name : file->table_names())
        schemas.push_back(file->table(name).schema());
    with.out << schema_to_text(schemas);
    return exit_success;
}

ExitCode dump(Surroundings& with, const Arguments& arguments) {
    const auto file = jet::Database::open_to_read(with.disk, arguments[0]);
    const jet::Table& table = file->table(arguments[1]);
    RowPrinter printer(with.out, table.schema(), all_columns(table.schema()));
    // What cannot be read is told, and the rest is printed all the same.
    ExitCode code = exit_success;
    for (const auto rows = table.scan();;) {
        try {
            if (!rows->next()) {
                printer.flush();
                return code;
            }
            printer.print(*rows);
        } catch (const RunTimeError& error) {
            printer.flush();
            tell(with.err, error.text());
            code = exit_failure;
        }
    }
}

ExitCode query(Surroundings& with, const Arguments& arguments) {
    const auto file = jet::Database::open_to_read(with.disk, arguments[0]);
    const sql::Select select = sql::parse(arguments[1], with.year);
    jet::Table& table = file->table(select.table);
    const std::vector<jet::RowId> rows = sql::run(select, table);

    std::vector<std::size_t> columns = all_columns(table.schema());
    if (!select.columns.empty()) {
        columns.clear();
        for (const std::string& name : select.columns) {
            const auto column = table.find_column(name);
            if (!column)
                throw RunTimeError(3061, "1");
            columns.push_back(*column);
        }
    }
    RowPrinter printer(with.out, table.schema(), std::move(columns));
    std::unique_ptr<jet::RowSeeker> reader;
    for (const jet::RowId row : rows) {
        if (reader)
            reader->go_to(row);
        else
            reader = table.reader(row);
        printer.print(*reader);
    }
    printer.flush();
    return exit_success;
}

/// What is wrong with one file, a line each; a file that cannot be opened is a finding like others.
std::vector<std::string> findings(files::FileSystem& disk, const std::string& path) {
    try {
        return jet::check(*jet::Database::open_to_read(disk, path));
    } catch (const RunTimeError& error) {
        return {error.text()};
    }
}

ExitCode check(Surroundings& with, const Arguments& arguments) {
    ExitCode code = exit_success;
    for (const std::string& path : arguments) {
        for (const std::string& finding : findings(with.disk, path)) {
            with.out << finding << '\n';
            code = exit_failure;
        }
    }
    return code;
}

// Writing

ExitCode make(Surroundings& with, const Arguments& arguments) {
    const files::Bytes text = files::read_whole(with.disk, arguments[1]);
    const auto schemas =
        parse_schema({reinterpret_cast<const char*>(text.data()), text.size()}, arguments[1]);
    auto version = jet::Format::Version::jet4;
    if (arguments.size() > 2) {
        if (arguments[2] != "97")
            throw RunTimeError::with_text(5, "no version \"" + arguments[2] + "\"; the older one is 97");
        version = jet::Format::Version::jet3;
    }
    jet::Database::create(with.disk, arguments[0], schemas, version);
    return exit_success;
}

/// The columns that a header line names, each at most once.
std::vector<std::size_t> named_columns(const jet::Table& table, std::string_view header) {
    std::vector<std::size_t> columns;
    std::vector<bool> named(table.schema().columns.size());
    for (const std::string_view field : split_fields(header)) {
        const std::string name = unescape(field);
        const auto column = table.find_column(name);
        if (!column)
            throw RunTimeError::with_text(3265, "line 1: the table has no column \"" + name + "\"");
        if (named[*column])
            throw RunTimeError::with_text(5, "line 1: the column \"" + name + "\" is named twice");
        named[*column] = true;
        columns.push_back(*column);
    }
    return columns;
}

/// A row without any value: null, or no where a column cannot be null.
jet::Row empty_row(const jet::TableSchema& schema) {
    jet::Row row(schema.columns.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (schema.columns[i].type == jet::ColumnType::boolean)
            row[i] = false;
    }
    return row;
}

ExitCode load(Surroundings& with, const Arguments& arguments) {
    const auto file = jet::Database::open(with.disk, arguments[0]);
    jet::Table& table = file->table(arguments[1]);
    const jet::TableSchema& schema = table.schema();

    std::string line;
    if (!std::getline(with.in, line))
        throw RunTimeError::with_text(62, "there is no line with column names");
    const std::vector<std::size_t> columns = named_columns(table, line);

    const jet::Row empty = empty_row(schema);
    std::size_t number = 1;
    while (std::getline(with.in, line)) {
        ++number;
        // Nothing is committed before the last line, so a failure leaves the file as it was.
        try {
            const auto fields = split_fields(line);
            if (fields.size() != columns.size()) {
                throw RunTimeError::with_text(5, std::to_string(columns.size()) +
                                                     " fields expected, but found " +
                                                     std::to_string(fields.size()));
            }
            jet::Row row = empty;
            for (std::size_t i = 0; i < columns.size(); ++i) {
                row[columns[i]] = field_from_text(schema.columns[columns[i]], fields[i]);
            }
            table.insert(row);
        } catch (const RunTimeError& error) {
            throw RunTimeError::with_text(error.number(),
                                          "line " + std::to_string(number) + ": " + error.text());
        }
    }
    if (with.in.bad())
        throw RunTimeError::with_text(75, "the rows could not be read to their end");
    file->commit();
    with.out << counted(number - 1) << " loaded\n";
    return exit_success;
}

ExitCode compact(Surroundings& with, const Arguments& arguments) {
    for (const std::string& name : jet::rebuild(with.disk, arguments[0], arguments[1]))
        tell(with.err, "the new file goes without '" + name + "', which is no table");
    return exit_success;
}

ExitCode backup(Surroundings& with, const Arguments& arguments) {
    const std::size_t count = back_up(with.disk, arguments[0], arguments[1]);
    with.out << count << (count == 1 ? " file" : " files") << " copied\n";
    return exit_success;
}

struct Assignment {
    std::string column;
    jet::Value value;
};

Assignment parse_assignment(const jet::TableSchema& schema, const std::string& text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string::npos)
        throw RunTimeError::with_text(5, "COLUMN=VALUE expected, but found \"" + text + "\"");
    const std::string name = text.substr(0, sign);
    for (const jet::ColumnSchema& column : schema.columns) {
        if (!basic::equal_names(column.name, name))
            continue;
        try {
            return {column.name, field_from_text(column, std::string_view(text).substr(sign + 1))};
        } catch (const RunTimeError& error) {
            throw RunTimeError::with_text(error.number(), name + ": " + error.text());
        }
    }
    throw RunTimeError::with_text(3265, "the table has no column \"" + name + "\"");
}

/// Opens the rows that a query selects for changing, has `change` change each of them, and makes it durable.
/// `prepare` sees the set first, also one without rows.
std::size_t change_rows(
    Surroundings& with, const std::string& path, const std::string& query_text,
    const std::function<void(dao::Recordset&)>& change,
    const std::function<void(const dao::Recordset&)>& prepare = [](const dao::Recordset&) {}) {
    dao::DBEngine engine(with.disk, [year = with.year] { return year; });
    const auto database = engine.Workspaces(0).OpenDatabase(path);
    const auto rows = database->OpenRecordset(query_text);
    prepare(*rows);
    std::size_t count = 0;
    for (; !rows->Eof(); rows->MoveNext()) {
        change(*rows);
        ++count;
    }
    engine.commit();
    return count;
}

ExitCode set(Surroundings& with, const Arguments& arguments) {
    std::vector<Assignment> assignments;
    const auto prepare = [&](const dao::Recordset& rows) {
        for (std::size_t i = 2; i < arguments.size(); ++i)
            assignments.push_back(parse_assignment(rows.schema(), arguments[i]));
    };
    const auto change = [&](dao::Recordset& rows) {
        rows.Edit();
        for (const Assignment& assignment : assignments)
            rows.write(assignment.column, assignment.value);
        rows.Update();
    };
    with.out << counted(change_rows(with, arguments[0], arguments[1], change, prepare)) << " changed\n";
    return exit_success;
}

ExitCode erase(Surroundings& with, const Arguments& arguments) {
    const std::size_t count =
        change_rows(with, arguments[0], arguments[1], [](dao::Recordset& rows) { rows.Delete(); });
    with.out << counted(count) << " deleted\n";
    return exit_success;
}

constexpr std::size_t any_number = SIZE_MAX;

constexpr std::string_view row_text =
    "The text, in UTF-8: a line with the column names, then a line for each row, fields parted by tabs. Tab, "
    "carriage\n"
    "return, line feed, the null character and the backslash are written \\t \\r \\n \\0 \\\\; null is \\N "
    "(an empty\n"
    "field is an empty text); yes/no is 1 or 0; dates are YYYY-MM-DD HH:MM:SS; real numbers are the "
    "shortest\n"
    "that read back the same; bytes are 0x and hexadecimal digits. Rows to load may leave columns out, "
    "which\n"
    "then stay null (no, for yes/no).\n";

constexpr std::string_view schema_help = "The text, one thing a line:\n\n"
                                         "  # anything behind a hash mark is a comment\n"
                                         "  table [table]\n"
                                         "  first   text 50\n"
                                         "  price   currency required\n"
                                         "  notes   memo\n"
                                         "  id      long\n"
                                         "  index names (last, first desc) unique\n\n"
                                         "Types: boolean, byte, integer, long, currency, single, double, "
                                         "date, binary N (bytes), text N (characters),\n"
                                         "memo, ole, guid, numeric P S (digits, of these behind the point). "
                                         "Column options: required, nozerolength,\n"
                                         "counter, fixed, default [EXPRESSION]. Index options: primary, "
                                         "unique, ignorenulls, required. A name goes\n"
                                         "between brackets when it is more than one plain word.\n";

constexpr Command all_commands[] = {
    {"tables", "FILE", "lists the tables with their rows, columns and indexes", "", 1, 1, tables},
    {"schema", "FILE", "prints the tables as the text that `make` reads", schema_help, 1, 1, schema},
    {"dump", "FILE TABLE", "prints a table's rows as text", row_text, 2, 2, dump},
    {"query", "FILE QUERY", "prints the rows of a query (\"select ...\") as text", row_text, 2, 2, query},
    {"load", "FILE TABLE", "appends rows from standard input, all of them or none", row_text, 2, 2, load},
    {"set", "FILE QUERY COLUMN=VALUE...",
     "changes columns in every row of a query, in all of them or in none",
     "A VALUE is written as a field of a row's text (see `dump`): \\N is null.\n", 3, any_number, set},
    {"delete", "FILE QUERY", "deletes every row of a query, all of them or none", "", 2, 2, erase},
    {"make", "FILE SCHEMA [97]",
     "makes a new file, or one of the older version, with empty tables from a schema text", schema_help, 2, 3,
     make},
    {"compact", "FILE NEW", "makes a new file with the tables of another, without what deletions left behind",
     "Tables, columns, properties, indexes, rows and their order are those of FILE, which is only read; what "
     "is "
     "no\ntable (a stored query, a relationship) is named and left out. NEW must not exist.\n",
     2, 2, compact},
    {"backup", "FOLDER TARGET",
     "copies a program folder's files as of one moment, while the program runs or not",
     "FOLDER is a program folder, of which data/ and letters/ are copied, or a data folder. TARGET is made, "
     "or "
     "is\nan empty folder.\n",
     2, 2, backup},
    {"check", "FILE...", "checks files' structure: a line for each finding, and failure if there is any", "",
     1, any_number, check},
};

} // namespace

std::span<const Command> commands() {
    return all_commands;
}

} // namespace tolva::data
