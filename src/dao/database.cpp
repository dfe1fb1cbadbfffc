#include "dao/database.h"

#include <utility>

#include "basic/run_time_error.h"
#include "basic/text.h"
#include "sql/select.h"

namespace tolva::dao {

namespace {

/// A query starts with its key word, which is no part of a longer name.
bool is_query(std::string_view source) {
    constexpr std::string_view word = "select";
    if (source.size() <= word.size() || !basic::equal_names(source.substr(0, word.size()), word))
        return false;
    constexpr std::string_view behind = " \t\r\n*[";
    return behind.find(source[word.size()]) != std::string_view::npos;
}

std::string_view without_blanks(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string table_name(std::string_view source) {
    const bool brackets = source.size() > 2 && source.front() == '[' && source.back() == ']';
    return std::string(brackets ? source.substr(1, source.size() - 2) : source);
}

std::vector<jet::RowId> all_rows(const jet::Table& table) {
    std::vector<jet::RowId> rows;
    for (const auto cursor = table.scan(); cursor->next();)
        rows.push_back(cursor->id());
    return rows;
}

} // namespace

Database::Database(DBEngine& engine, std::unique_ptr<jet::Database> file)
    : engine_(engine), file_(std::move(file)) {}

Database::~Database() {
    if (engine_.pending_ == this)
        engine_.pending_ = nullptr;
}

std::unique_ptr<Recordset> Database::OpenRecordset(const std::string& source) {
    const std::string_view text = without_blanks(source);
    if (!is_query(text)) {
        jet::Table& table = file_->table(table_name(text));
        return std::make_unique<Recordset>(*this, table, all_rows(table), Recordset::Kind::table);
    }
    const sql::Select select = sql::parse(text, current_year());
    jet::Table& table = file_->table(select.table);
    return std::make_unique<Recordset>(*this, table, sql::run(select, table, optional_columns_));
}

void Database::about_to_change() {
    if (engine_.pending_ != this)
        engine_.commit();
    engine_.pending_ = this;
    ++changes_;
}

int Database::current_year() const {
    return engine_.current_year_();
}

std::optional<basic::Date> Database::moment() const {
    return engine_.moment_ ? std::optional(engine_.moment_()) : std::nullopt;
}

std::unique_ptr<Database> Workspace::OpenDatabase(const std::string& path) {
    return std::make_unique<Database>(engine_, jet::Database::open(engine_.disk_, path));
}

DBEngine::DBEngine(files::FileSystem& disk, std::function<int()> current_year,
                   std::function<basic::Date()> moment)
    : disk_(disk), current_year_(std::move(current_year)), moment_(std::move(moment)) {}

Workspace& DBEngine::Workspaces(int item) {
    if (item != 0)
        throw basic::RunTimeError(3265);
    return default_workspace_;
}

void DBEngine::commit() {
    if (pending_ == nullptr)
        return;
    if (pending_->file().has_pending_changes())
        pending_->file().commit();
    pending_ = nullptr;
}

} // namespace tolva::dao
