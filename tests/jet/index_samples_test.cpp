#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "jet/open_database.h"
#include "support/sample_files.h"
#include "support/samples.h"

// What other programs wrote into their indexes, held against what this one makes of their rows.

namespace tolva::jet {
namespace {

using Entry = std::pair<Key, RowId>;

bool comes_before(const Entry& a, const Entry& b) {
    if (a.first == b.first)
        return a.second < b.second;
    return std::lexicographical_compare(a.first.begin(), a.first.end(), b.first.begin(), b.first.end());
}

std::vector<Entry> entries_of(const IndexTree& tree) {
    std::vector<Entry> entries;
    tree.walk([&](std::span<const std::uint8_t> key, RowId row) {
        entries.emplace_back(Key(key.begin(), key.end()), row);
        return true;
    });
    return entries;
}

class IndexSamples : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        TOLVA_NEEDS_SAMPLE(GetParam());
        disk_ = files::make_disk();
        database_ = std::make_unique<OpenDatabase>(*disk_, support::copy_sample(GetParam(), folder_));
    }

    /// Calls for each index of each table, the system's included.
    template <typename Visit>
    void for_each_index(Visit visit) {
        for (const OpenDatabase::Entry& entry : database_->catalog()) {
            StoredTable& table = database_->stored_table(entry.name);
            for (std::size_t i = 0; i < table.definition().real_indexes.size(); ++i) {
                SCOPED_TRACE(entry.name + ", index " + std::to_string(i));
                visit(table, i);
            }
        }
    }

    support::TemporaryFolder folder_;
    std::unique_ptr<files::FileSystem> disk_;
    std::unique_ptr<OpenDatabase> database_;
};

TEST_P(IndexSamples, HoldTheKeysThatTheirRowsGet) {
    std::size_t keys_seen = 0;
    for_each_index([&](StoredTable& table, std::size_t index) {
        ASSERT_TRUE(table.indexes().understands(index));
        std::vector<Entry> expected;
        const auto rows = table.scan();
        while (rows->next()) {
            Row row(table.definition().columns.size());
            for (const std::size_t column : table.indexes().columns())
                row[column] = rows->value(column);
            if (const auto key = table.indexes().keys_as_stored(row)[index])
                expected.emplace_back(*key, rows->id());
        }
        std::sort(expected.begin(), expected.end(), comes_before);
        MappedIndexPages pages = table.indexes().pages(index);
        const std::vector<Entry> stored = entries_of(table.indexes().tree(index, pages));
        ASSERT_EQ(stored.size(), expected.size());
        for (std::size_t i = 0; i < stored.size(); ++i, ++keys_seen) {
            const auto [key, row] = stored[i];
            ASSERT_TRUE(row == expected[i].second);
            if (key.size() <= database_->pager().format().longest_key) {
                ASSERT_EQ(key, expected[i].first);
            } else {
                // A writer that knew no limit; the weights, which come first, are the same all the same.
                const auto end_of_weights = std::find(key.begin(), key.end(), 0x01);
                ASSERT_TRUE(std::equal(key.begin(), end_of_weights, expected[i].first.begin()));
            }
        }
    });
    EXPECT_GT(keys_seen, 0U);
}

TEST_P(IndexSamples, AreSoundTrees) {
    for_each_index([&](StoredTable& table, std::size_t index) {
        MappedIndexPages pages = table.indexes().pages(index);
        std::vector<PageNumber> owned;
        for (const std::string& finding : table.indexes().tree(index, pages).check(owned))
            ADD_FAILURE() << finding;
    });
}

TEST_P(IndexSamples, TakeAllTheirEntriesOutAndInAgain) {
    std::mt19937 random(17);
    for_each_index([&](StoredTable& table, std::size_t index) {
        MappedIndexPages pages = table.indexes().pages(index);
        IndexTree tree = table.indexes().tree(index, pages);
        std::vector<Entry> entries = entries_of(tree);
        std::erase_if(entries, [&](const Entry& entry) {
            return entry.first.size() > database_->pager().format().longest_key;
        });
        std::vector<Entry> mixed = entries;
        std::shuffle(mixed.begin(), mixed.end(), random);
        const auto expect_sound = [&] {
            std::vector<PageNumber> owned;
            for (const std::string& finding : tree.check(owned))
                ADD_FAILURE() << finding;
        };
        for (std::size_t i = 0; i < mixed.size(); ++i) {
            ASSERT_TRUE(tree.erase(mixed[i].first, mixed[i].second));
            if (i == mixed.size() / 2)
                expect_sound();
        }
        std::shuffle(mixed.begin(), mixed.end(), random);
        for (const auto& [key, row] : mixed)
            tree.insert(key, row);
        expect_sound();
        std::vector<Entry> after = entries_of(tree);
        std::erase_if(after, [&](const Entry& entry) {
            return entry.first.size() > database_->pager().format().longest_key;
        });
        EXPECT_TRUE(after == entries);
    });
}

INSTANTIATE_TEST_SUITE_P(Files, IndexSamples, support::sample_files, support::sample_name);

} // namespace
} // namespace tolva::jet
