#include "jet/check.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/long_value.h"
#include "jet/open_database.h"
#include "jet/row_codec.h"
#include "jet/usage_map.h"

namespace tolva::jet {
namespace {

class StructureCheck {
  public:
    explicit StructureCheck(OpenDatabase& database) : database_(database), pager_(database.pager()) {}

    std::vector<std::string> run() {
        owners_.resize(pager_.page_count());
        claim(0, "the header");
        guarded([&] { check_map_place({1, 0}, 0); });
        for (const PageNumber page : map({1, 0}, 0, UsageMap::Kind::global).map_pages())
            claim(page, "the map of free pages");
        std::set<PageNumber> definitions;
        for (const auto& entry : database_.catalog()) {
            if (!definitions.insert(entry.page).second)
                say(OpenDatabase::catalog_page,
                    "two tables are defined on page " + std::to_string(entry.page));
            else
                guarded([&] { check_table(database_.stored_table(entry.name)); });
        }
        guarded([&] { check_free_pages(); });
        return findings_;
    }

  private:
    /// How often a record of a page is pointed to.
    using Uses = std::map<RecordPlace, int>;
    /// The rows of a table with their keys in each index.
    using Rows = std::vector<std::pair<RowId, TableIndexes::Keys>>;

    void say(PageNumber page, const std::string& reason) {
        findings_.push_back(pager_.path() + ": page " + std::to_string(page) + ": " + reason);
    }

    /// Damage that a reader runs into is a finding like any other.
    void guarded(const std::function<void()>& look) {
        try {
            look();
        } catch (const basic::RunTimeError& error) {
            if (error.number() != 3049)
                throw;
            findings_.push_back(error.text());
        }
    }

    void claim(PageNumber page, const std::string& owner) {
        if (page >= owners_.size()) {
            say(page, "is not there, but belongs to " + owner);
            return;
        }
        if (!owners_[page].empty())
            say(page, "belongs to " + owners_[page] + " and to " + owner);
        owners_[page] = owner;
    }

    UsageMap map(RecordPlace place, PageNumber named_by, UsageMap::Kind kind) {
        return {pager_, place, named_by, kind};
    }

    /// A page of small maps serves many owners, so it may be met again.
    void check_map_place(RecordPlace place, PageNumber named_by) {
        const std::string owner = "usage maps";
        map(place, named_by, UsageMap::Kind::owned);
        if (owners_[place.page] == owner)
            return;
        claim(place.page, owner);
        const PageRef bytes = pager_.read(place.page);
        check_page_head(place.page, DataPageView(pager_.format(), pager_.path(), place.page, *bytes));
    }

    void check_page_head(PageNumber page, const DataPageView& view) {
        if (view.free_space() != view.actual_free_space())
            say(page, "claims " + std::to_string(view.free_space()) + " free bytes and has " +
                          std::to_string(view.actual_free_space()));
        // Records that overlap show as slots out of order, which an engine's own pages never have.
        if (!view.in_order())
            say(page, "has records out of order");
    }

    /// Claims the pages of an owned map, and tests the map of roomy pages against it.
    std::vector<PageNumber> check_maps(RecordPlace owned, RecordPlace free, PageNumber named_by,
                                       const std::string& owner) {
        check_map_place(owned, named_by);
        const UsageMap owned_map = map(owned, named_by, UsageMap::Kind::owned);
        for (const PageNumber page : owned_map.map_pages())
            claim(page, "a usage map of " + owner);
        const std::vector<PageNumber> pages = owned_map.pages();
        for (const PageNumber page : pages)
            claim(page, owner);
        if (free.page == 0)
            return pages;
        check_map_place(free, named_by);
        const UsageMap free_map = map(free, named_by, UsageMap::Kind::free);
        for (const PageNumber page : free_map.map_pages())
            claim(page, "a usage map of " + owner);
        for (const PageNumber page : free_map.pages())
            if (!std::binary_search(pages.begin(), pages.end(), page))
                say(page, "is said to have room for " + owner + ", which does not own it");
        return pages;
    }

    void check_table(const StoredTable& table) {
        const TableDefinition& definition = table.definition();
        const std::string name = "table '" + table.schema().name + "'";
        for (const PageNumber page : definition.pages)
            claim(page, "the definition of " + name);
        const auto pages = check_maps(definition.owned_map, definition.free_map, definition.page, name);

        std::vector<Uses> long_values(definition.columns.size());
        Uses moved;
        Rows rows;
        for (const PageNumber page : pages)
            guarded([&] { check_rows(table, page, moved, long_values, rows); });
        check_moved_rows(pages, moved);
        if (rows.size() != table.row_count())
            say(definition.page, name + " counts " + std::to_string(table.row_count()) + " rows and has " +
                                     std::to_string(rows.size()));
        for (std::size_t i = 0; i < definition.columns.size(); ++i)
            if (definition.columns[i].owned_map.page != 0)
                guarded([&] { check_long_values(definition, definition.columns[i], long_values[i], name); });
        for (std::size_t i = 0; i < definition.real_indexes.size(); ++i)
            guarded([&] { check_index(table, i, rows, name); });
    }

    void check_rows(const StoredTable& table, PageNumber page, Uses& moved, std::vector<Uses>& long_values,
                    Rows& rows) {
        const TableDefinition& definition = table.definition();
        const PageRef bytes = pager_.read(page);
        const DataPageView view(pager_.format(), pager_.path(), page, *bytes);
        if (view.owner() != definition.page)
            say(page, "names page " + std::to_string(view.owner()) + " as its table's, not " +
                          std::to_string(definition.page));
        check_page_head(page, view);
        for (std::size_t slot = 0; slot < view.slots(); ++slot) {
            if (view.flags(slot) & DataPageView::hidden_flag)
                continue;
            const RowId id{page, static_cast<std::uint8_t>(slot)};
            const Record record{bytes, view.record(slot), view.flags(slot)};
            guarded([&] {
                std::vector<RecordPlace> hops;
                const Record standing = follow_moved_row(pager_, record, page, &hops);
                for (const RecordPlace hop : hops)
                    ++moved[hop];
                const PageNumber where = hops.empty() ? page : hops.back().page;
                Row row(definition.columns.size());
                const RowView fields(pager_, where, standing.bytes);
                for (std::size_t i = 0; i < row.size(); ++i)
                    row[i] = check_field(definition.columns[i], fields, where, long_values[i]);
                for (const std::size_t i : table.indexes().columns())
                    if (definition.columns[i].is_long())
                        row[i] = decode_column(pager_, where, definition.columns[i], fields);
                rows.emplace_back(id, table.indexes().keys_as_stored(row));
            });
        }
    }

    Value check_field(const Column& column, const RowView& fields, PageNumber where, Uses& uses) {
        if (!column.is_long() || fields.is_null(column))
            return decode_column(pager_, where, column, fields);
        const LongValueHead head = read_long_value_head(pager_, where, fields.field(column));
        bool first = true;
        visit_long_value(pager_, where, head, [&](RecordPlace place, std::span<const std::uint8_t>) {
            ++uses[place];
            if (!first)
                return;
            first = false;
            const std::size_t stamp = pager_.format().data.long_value_stamp;
            if (stamp != 0 && head.form == LongValueHead::Form::chain &&
                get32(pager_.read(place.page)->data() + stamp) != head.stamp)
                say(place.page,
                    "has another stamp than a long value of page " + std::to_string(where) + " expects");
        });
        return {};
    }

    /// Every hidden record of a table is the place of one moved row.
    void check_moved_rows(const std::vector<PageNumber>& pages, const Uses& moved) {
        for (const PageNumber page : pages) {
            const PageRef bytes = pager_.read(page);
            if (!is_data_page(*bytes))
                continue;
            const DataPageView view(pager_.format(), pager_.path(), page, *bytes);
            for (std::size_t slot = 0; slot < view.slots(); ++slot) {
                const std::uint16_t flags = view.flags(slot);
                const auto found = moved.find({page, static_cast<std::uint8_t>(slot)});
                const int count = found == moved.end() ? 0 : found->second;
                // A record with both flags is a tombstone when nobody names it, else a place passed.
                if (count > 1 || (count == 0 && flags == DataPageView::hidden_flag))
                    say(page, "record " + std::to_string(slot) + " is a moved row that " +
                                  std::to_string(count) + " places name");
            }
        }
    }

    void check_long_values(const TableDefinition& definition, const Column& column, const Uses& uses,
                           const std::string& table) {
        const std::string name = "column '" + column.name + "' of " + table;
        const auto pages = check_maps(column.owned_map, column.free_map, definition.page, name);
        for (const auto& [place, count] : uses) {
            if (count > 1)
                say(place.page, "record " + std::to_string(place.slot) + " holds " + std::to_string(count) +
                                    " long values");
            if (!std::binary_search(pages.begin(), pages.end(), place.page))
                say(place.page, "has a long value of " + name + ", which does not own it");
        }
        for (const PageNumber page : pages) {
            const PageRef bytes = pager_.read(page);
            const DataPageView view(pager_.format(), pager_.path(), page, *bytes);
            if (!view.holds_long_values())
                say(page, "does not hold long values, as " + name + " says");
            check_page_head(page, view);
            for (std::size_t slot = 0; slot < view.slots(); ++slot)
                if (!view.is_tombstone(slot) && uses.count({page, static_cast<std::uint8_t>(slot)}) == 0)
                    say(page, "record " + std::to_string(slot) + " is a long value that no row has");
        }
    }

    void check_index(const StoredTable& table, std::size_t place, const Rows& rows, const std::string& name) {
        const RealIndex& index = table.definition().real_indexes[place];
        const std::string owner = "index " + std::to_string(place) + " of " + name;
        check_map_place(index.owned_map, table.definition().page);
        const UsageMap owned = map(index.owned_map, table.definition().page, UsageMap::Kind::owned);
        for (const PageNumber page : owned.map_pages())
            claim(page, "a usage map of " + owner);
        const std::vector<PageNumber> mapped = owned.pages();
        for (const PageNumber page : mapped)
            claim(page, owner);

        MappedIndexPages pages = table.indexes().pages(place);
        const IndexTree tree = table.indexes().tree(place, pages);
        std::vector<PageNumber> met;
        for (const std::string& line : tree.check(met))
            findings_.push_back(pager_.path() + ": " + line);
        std::sort(met.begin(), met.end());
        for (const PageNumber page : met)
            if (!std::binary_search(mapped.begin(), mapped.end(), page))
                say(page, "is a page of " + owner + ", whose map does not have it");
        for (const PageNumber page : mapped)
            if (!std::binary_search(met.begin(), met.end(), page))
                say(page, "belongs to " + owner + ", whose tree does not reach it");
        check_entries(table, place, tree, rows, owner);
    }

    void check_entries(const StoredTable& table, std::size_t place, const IndexTree& tree, const Rows& rows,
                       const std::string& owner) {
        const PageNumber root = table.definition().real_indexes[place].root;
        const bool understood = table.indexes().understands(place);
        using Entry = std::pair<RowId, Key>;
        std::vector<Entry> there, expected;
        // A longer key is that of a program which knows no limit; then only the row counts.
        const std::size_t longest_key = pager_.format().longest_key;
        std::set<RowId> unlimited;
        tree.walk([&](std::span<const std::uint8_t> key, RowId row) {
            if (key.size() > longest_key)
                unlimited.insert(row);
            const bool counts = understood && key.size() <= longest_key;
            there.emplace_back(row, counts ? Key(key.begin(), key.end()) : Key{});
            return true;
        });
        for (const auto& [id, keys] : rows) {
            if (!understood || unlimited.count(id) != 0) {
                expected.emplace_back(id, Key{});
                continue;
            }
            if (keys[place])
                expected.emplace_back(id, *keys[place]);
        }
        std::sort(there.begin(), there.end());
        std::sort(expected.begin(), expected.end());
        std::vector<Entry> odd;
        const auto tell = [&](const char* what) {
            constexpr std::size_t most_told = 20;
            for (std::size_t i = 0; i < odd.size() && i < most_told; ++i)
                say(root, owner + what + std::to_string(odd[i].first.slot) + " of page " +
                              std::to_string(odd[i].first.page));
            if (odd.size() > most_told)
                say(root, owner + " differs in " + std::to_string(odd.size() - most_told) + " more entries");
            odd.clear();
        };
        std::set_difference(there.begin(), there.end(), expected.begin(), expected.end(),
                            std::back_inserter(odd));
        tell(" has an entry or a key that no row has, for record ");
        std::set_difference(expected.begin(), expected.end(), there.begin(), there.end(),
                            std::back_inserter(odd));
        // Which rows such an index leaves out shows in no key that is known here.
        if (!understood && table.definition().real_indexes[place].ignores_nulls())
            odd.clear();
        tell(" lacks the entry of record ");
    }

    void check_free_pages() {
        const UsageMap free = map({1, 0}, 0, UsageMap::Kind::global);
        const PageNumber first_told = free.first_told();
        for (PageNumber page = 0; page < owners_.size(); ++page) {
            const bool is_free = free.contains(page);
            if (is_free && !owners_[page].empty())
                say(page, "is marked free, but belongs to " + owners_[page]);
            // Engines keep a stretch of pages for a table that grows; those they have not come to are blank.
            if (!is_free && owners_[page].empty() && page >= first_told && !is_blank(page))
                say(page, "belongs to nothing and is not marked free");
        }
    }

    bool is_blank(PageNumber page) const {
        const PageRef bytes = pager_.read(page);
        return std::all_of(bytes->begin(), bytes->end(), [](std::uint8_t byte) { return byte == 0; });
    }

    OpenDatabase& database_;
    Pager& pager_;
    std::vector<std::string> owners_; ///< by page; empty for none
    std::vector<std::string> findings_;
};

} // namespace

std::vector<std::string> check(Database& database) {
    return StructureCheck(dynamic_cast<OpenDatabase&>(database)).run();
}

} // namespace tolva::jet
