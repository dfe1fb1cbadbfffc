#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/index_page.h"
#include "jet/index_tree.h"
#include "support/memory_index_pages.h"

namespace tolva::jet {
namespace {

constexpr PageNumber table_page = 42;

struct EntryLess {
    bool operator()(const std::pair<Key, RowId>& a, const std::pair<Key, RowId>& b) const {
        if (a.first == b.first)
            return a.second < b.second;
        return std::lexicographical_compare(a.first.begin(), a.first.end(), b.first.begin(), b.first.end());
    }
};
using Model = std::set<std::pair<Key, RowId>, EntryLess>;

struct Fixture {
    support::MemoryIndexPages pages;
    PageNumber root = pages.allocate();
    IndexTree tree{pages, root, table_page};

    explicit Fixture(const Format& format = jet4_format) : pages(format) {
        IndexTree::create(pages, root, table_page);
    }

    void expect_sound() {
        std::vector<PageNumber> owned;
        const auto findings = tree.check(owned);
        for (const std::string& finding : findings)
            ADD_FAILURE() << finding;
        EXPECT_EQ(std::set<PageNumber>(owned.begin(), owned.end()), pages.in_use())
            << "every page in use belongs to the tree";
    }

    void expect_holds(const Model& model) {
        auto expected = model.begin();
        tree.walk([&](std::span<const std::uint8_t> key, RowId row) {
            if (expected == model.end() || Key(key.begin(), key.end()) != expected->first ||
                !(row == expected->second)) {
                ADD_FAILURE() << "the walk differs from the model at row " << row.page << "/"
                              << int(row.slot);
                return false;
            }
            ++expected;
            return true;
        });
        EXPECT_TRUE(expected == model.end()) << "the walk ended before the model";
    }

    std::size_t leaves() {
        std::vector<PageNumber> owned;
        tree.check(owned);
        return static_cast<std::size_t>(std::count_if(owned.begin(), owned.end(), [&](PageNumber page) {
            return IndexPage(pages, page, table_page).is_leaf();
        }));
    }
};

Key number_key(std::uint32_t number) {
    Key key;
    append_key(key, {ColumnType::long_integer}, static_cast<std::int64_t>(number));
    return key;
}

RowId row_number(std::uint32_t number) {
    return {1000 + number / 100, static_cast<std::uint8_t>(number % 100)};
}

TEST(IndexTree, StartsEmpty) {
    Fixture f;
    EXPECT_FALSE(f.tree.contains(number_key(1)));
    EXPECT_FALSE(f.tree.erase(number_key(1), row_number(1)));
    EXPECT_TRUE(f.tree.find_prefix({}).empty());
    f.expect_holds({});
    f.expect_sound();
}

TEST(IndexTree, FindsByWholeKeyAndByItsStart) {
    Fixture f;
    const Key smith = {0x7f, 0x6b, 0x60, 0x01, 0x00}, smithe = {0x7f, 0x6b, 0x60, 0x51, 0x01, 0x00};
    f.tree.insert(smithe, {9, 1});
    f.tree.insert(smith, {8, 3});
    f.tree.insert(smith, {8, 2});
    EXPECT_TRUE(f.tree.contains(smith));
    EXPECT_FALSE(f.tree.contains(Key{0x7f, 0x6b, 0x60}));
    EXPECT_EQ(f.tree.find_prefix(smith), (std::vector<RowId>{{8, 2}, {8, 3}}));
    EXPECT_EQ(f.tree.find_prefix(Key{0x7f, 0x6b, 0x60}), (std::vector<RowId>{{8, 2}, {8, 3}, {9, 1}}));
    EXPECT_TRUE(f.tree.find_prefix(Key{0x7f, 0x6c}).empty());
    EXPECT_TRUE(f.tree.erase(smith, {8, 2}));
    EXPECT_FALSE(f.tree.erase(smith, {8, 2}));
    EXPECT_TRUE(f.tree.contains(smith));
    f.expect_sound();
}

TEST(IndexTree, KeepsOneEntryWhenItComesTwice) {
    Fixture f;
    f.tree.insert(number_key(7), row_number(7));
    f.tree.insert(number_key(7), row_number(7));
    EXPECT_EQ(f.tree.find_prefix(number_key(7)).size(), 1U);
}

TEST(IndexTree, WritesAPageByteForByte) {
    Fixture f;
    f.tree.insert(number_key(2), {0x010203, 4});
    f.tree.insert(number_key(1), {0x010203, 5});
    const Page& page = *f.pages.read(f.root);
    const std::uint8_t header[] = {4, 1, 0x0e, 0x0e, table_page, 0, 0, 0};
    EXPECT_TRUE(std::equal(std::begin(header), std::end(header), page.begin()));
    EXPECT_TRUE(std::all_of(page.begin() + 8, page.begin() + 27, [](auto byte) { return byte == 0; }));
    EXPECT_EQ(page[27], 0);
    EXPECT_EQ(page[28], 0x02) << "an entry ends at 9";
    EXPECT_EQ(page[29], 0x04) << "the next at 18";
    const std::uint8_t entries[] = {0x7f, 0x80, 0, 0, 1, 1, 2, 3, 5, 0x7f, 0x80, 0, 0, 2, 1, 2, 3, 4};
    EXPECT_TRUE(std::equal(std::begin(entries), std::end(entries), page.begin() + 480));
}

TEST(IndexTree, SharesStartsOnlyWhenALeafIsFull) {
    Fixture f;
    const auto prefix = [&] { return IndexPage(f.pages, f.root, table_page).prefix(); };
    for (std::uint32_t i = 0; i < 401; ++i)
        f.tree.insert(number_key(i), row_number(i));
    EXPECT_EQ(prefix(), 0U);
    f.tree.insert(number_key(401), row_number(401));
    EXPECT_EQ(prefix(), 3U);
    f.expect_sound();
    // The start may go on into the row: equal keys of rows on one page.
    Fixture equal;
    for (std::uint32_t i = 0; i < 255; ++i)
        for (std::uint32_t page = 256; page < 260; ++page)
            equal.tree.insert(number_key(3), {page, static_cast<std::uint8_t>(i)});
    EXPECT_EQ(IndexPage(equal.pages, equal.root, table_page).prefix(), 7U);
    EXPECT_EQ(equal.tree.find_prefix(number_key(3)).size(), 1020U);
    equal.expect_sound();
}

TEST(IndexTree, SplitKeepsKeysInOrder) {
    Fixture f;
    Model model;
    for (std::uint32_t i = 0; i < 3000; ++i) {
        const std::uint32_t number = i * 7919 % 3001;
        f.tree.insert(number_key(number), row_number(number));
        model.emplace(number_key(number), row_number(number));
    }
    EXPECT_GT(f.leaves(), 4U);
    f.expect_holds(model);
    f.expect_sound();
}

TEST(IndexTree, LeavesPagesFullThatAreLoadedInOrder) {
    Fixture ascending, descending;
    for (std::uint32_t i = 0; i < 6000; ++i) {
        ascending.tree.insert(number_key(i), row_number(i));
        descending.tree.insert(number_key(6000 - i), row_number(6000 - i));
    }
    EXPECT_EQ(ascending.leaves(), 10U);
    EXPECT_LE(descending.leaves(), 20U);
    ascending.expect_sound();
    descending.expect_sound();
}

TEST(IndexTree, GivesPagesBackAndUsesThemAgain) {
    Fixture f;
    const auto load = [&] {
        for (std::uint32_t i = 0; i < 4000; ++i)
            f.tree.insert(number_key(i), row_number(i));
    };
    load();
    const PageNumber pages = f.pages.page_count();
    for (int round = 0; round < 5; ++round) {
        for (std::uint32_t i = 0; i < 4000; ++i)
            ASSERT_TRUE(f.tree.erase(number_key(i), row_number(i))) << i;
        EXPECT_EQ(f.pages.in_use().size(), 1U) << "only the root is left";
        f.expect_holds({});
        f.expect_sound();
        load();
        f.expect_sound();
    }
    EXPECT_EQ(f.pages.page_count(), pages);
}

TEST(IndexTree, StopsAWalkWhenTold) {
    Fixture f;
    for (std::uint32_t i = 0; i < 1000; ++i)
        f.tree.insert(number_key(i), row_number(i));
    int visited = 0;
    f.tree.walk([&](std::span<const std::uint8_t>, RowId) { return ++visited < 10; });
    EXPECT_EQ(visited, 10);
}

TEST(IndexTree, WorksOnNodesWithoutATail) {
    Fixture f;
    Model model;
    const auto add = [&](std::uint32_t number) {
        f.tree.insert(number_key(number), row_number(number));
        model.emplace(number_key(number), row_number(number));
    };
    for (std::uint32_t i = 0; i < 1500; ++i)
        add(i * 2);
    // Another writer may name every child by an entry.
    const IndexPage root(f.pages, f.root, table_page);
    EntryList refs = root.entries();
    IndexPageHeader header = root.header();
    Key last = number_key(2998);
    append_row(last, row_number(2998));
    last.insert(last.end(), {0, 0, 0, static_cast<std::uint8_t>(header.tail)});
    refs.push_back(last);
    header.tail = 0;
    write_index_page(f.pages, f.root, table_page, header, refs, 0);
    f.expect_sound();
    f.expect_holds(model);

    for (std::uint32_t i = 0; i < 500; ++i) {
        add(3000 + i);
        add(i * 6 + 1);
    }
    f.expect_sound();
    f.expect_holds(model);
    EXPECT_TRUE(f.tree.contains(number_key(3499)));
    while (!model.empty()) {
        const auto end = std::prev(model.end());
        ASSERT_TRUE(f.tree.erase(end->first, end->second));
        model.erase(end);
        if (model.size() % 250 == 0) {
            f.expect_sound();
            f.expect_holds(model);
        }
    }
    EXPECT_EQ(f.pages.in_use().size(), 1U);
}

// Against a model ----------------------------------------------------------------------------------------

enum class Arrival { random, ascending, descending };

/// Keys whose order is that of their numbers, of one kind each.
Key made_key(const std::string& kind, std::uint32_t number, std::size_t longest) {
    if (kind == "short")
        return number_key(number);
    if (kind == "few")
        return number_key(number / 500);
    Key key = {0x7f};
    if (kind == "long") // up to the limit, most of it shared
        key.insert(key.end(), longest - 130 + number / 7 % 120, 0x4a);
    if (kind == "mixed" && number % 11 == 0)
        key.insert(key.end(), longest * 2 / 5, 0x4a);
    for (int shift = 24; shift >= 0; shift -= 8)
        key.push_back(static_cast<std::uint8_t>(0x20 + (number >> shift & 0x7f)));
    if (kind == "mixed")
        key.insert(key.end(), number % 97, 0x55);
    key.insert(key.end(), {0x01, 0x00});
    return key;
}

class IndexTreeModel : public testing::TestWithParam<std::tuple<std::string, Arrival, const Format*>> {};

TEST_P(IndexTreeModel, AgreesWithASortedSet) {
    const auto& [kind, arrival, format] = GetParam();
    Fixture f(*format);
    Model model;
    std::mt19937 random(4711);
    constexpr std::uint32_t operations = 50000, numbers = 20000;
    std::uint32_t next = 0;
    for (std::uint32_t step = 1; step <= operations; ++step) {
        // Phases that grow and phases that shrink, down to nothing at the end.
        const bool grow = step > operations * 9 / 10 ? false : random() % 10 < (step / 8000 % 2 ? 3U : 8U);
        if (grow || model.empty()) {
            const std::uint32_t number = arrival == Arrival::random      ? random() % numbers
                                         : arrival == Arrival::ascending ? next++
                                                                         : numbers * 3 - next++;
            const Key key = made_key(kind, number, format->longest_key);
            f.tree.insert(key, row_number(number));
            model.emplace(key, row_number(number));
        } else {
            auto gone = model.begin();
            switch (step / 3000 % 3) {
            case 0:
                break; // from the front
            case 1:
                gone = std::prev(model.end());
                break;
            default: {
                const std::uint32_t near = random() % numbers;
                gone = model.lower_bound({made_key(kind, near, format->longest_key), row_number(near)});
                if (gone == model.end())
                    gone = model.begin();
            }
            }
            ASSERT_TRUE(f.tree.erase(gone->first, gone->second)) << "step " << step;
            model.erase(gone);
        }
        if (step % 5000 == 0 || step == operations) {
            SCOPED_TRACE(step);
            f.expect_holds(model);
            f.expect_sound();
            for (int i = 0; i < 50; ++i) {
                const Key key = made_key(kind, random() % numbers, format->longest_key);
                const auto from = model.lower_bound({key, RowId{}});
                std::vector<RowId> rows;
                for (auto entry = from; entry != model.end() && entry->first == key; ++entry)
                    rows.push_back(entry->second);
                EXPECT_EQ(f.tree.find_prefix(key), rows);
                EXPECT_EQ(f.tree.contains(key), !rows.empty());
            }
        }
        if (HasFailure())
            return;
    }
}

std::string parameter_name(const testing::TestParamInfo<IndexTreeModel::ParamType>& info) {
    static const char* const arrivals[] = {"Random", "Ascending", "Descending"};
    return std::get<0>(info.param) + arrivals[static_cast<int>(std::get<1>(info.param))];
}

INSTANTIATE_TEST_SUITE_P(Jet3, IndexTreeModel,
                         testing::Combine(testing::Values("short", "few", "long", "mixed"),
                                          testing::Values(Arrival::random, Arrival::descending),
                                          testing::Values(&jet3_format)),
                         parameter_name);
INSTANTIATE_TEST_SUITE_P(Jet4, IndexTreeModel,
                         testing::Combine(testing::Values("short", "few", "long", "mixed"),
                                          testing::Values(Arrival::random, Arrival::ascending,
                                                          Arrival::descending),
                                          testing::Values(&jet4_format)),
                         parameter_name);

// Damage -------------------------------------------------------------------------------------------------

struct Damaged : Fixture {
    Damaged() {
        for (std::uint32_t i = 0; i < 2000; ++i)
            tree.insert(number_key(i * 3), row_number(i));
    }

    PageNumber first_leaf() { return child_of(IndexPage(pages, root, table_page).whole(0)); }

    std::string error_of(const std::function<void()>& action) {
        try {
            action();
        } catch (const basic::RunTimeError& error) {
            EXPECT_EQ(error.number(), 3049);
            return error.text();
        }
        return "no error";
    }
    std::string walk_error() {
        return error_of([this] { tree.walk([](auto, auto) { return true; }); });
    }
    std::string check_text() {
        std::vector<PageNumber> owned;
        std::string text;
        for (const std::string& finding : tree.check(owned))
            text += finding + "\n";
        return text;
    }
};

TEST(IndexTreeDamage, NamesFilePageAndReason) {
    Damaged f;
    const PageNumber leaf = f.first_leaf();
    f.pages.raw(leaf)[0] = 1;
    const std::string text = f.walk_error();
    EXPECT_NE(text.find("memory.mdb"), std::string::npos) << text;
    EXPECT_NE(text.find("Page " + std::to_string(leaf)), std::string::npos) << text;
    EXPECT_NE(text.find("no index page"), std::string::npos) << text;
    EXPECT_NE(f.check_text().find("no index page"), std::string::npos);
}

TEST(IndexTreeDamage, NoticesAPageOfAnotherTable) {
    Damaged f;
    put32(&f.pages.raw(f.first_leaf())[4], 43);
    EXPECT_NE(f.walk_error().find("another table"), std::string::npos);
}

TEST(IndexTreeDamage, NoticesPagesThatAreNotThere) {
    Damaged f;
    put32(&f.pages.raw(f.first_leaf())[16], 5000);
    EXPECT_NE(f.walk_error().find("Page 5000"), std::string::npos);
    IndexTree lost(f.pages, 7000, table_page);
    EXPECT_NE(f.error_of([&] { lost.contains(number_key(1)); }).find("Page 7000"), std::string::npos);
    IndexTree none(f.pages, 0, table_page);
    EXPECT_NE(f.error_of([&] { none.contains(number_key(1)); }), "no error");
}

TEST(IndexTreeDamage, EndsWalksThatGoInACircle) {
    Damaged leaves;
    const PageNumber leaf = leaves.first_leaf();
    put32(&leaves.pages.raw(leaf)[16], leaf);
    EXPECT_NE(leaves.walk_error().find("circle"), std::string::npos);

    Damaged nodes;
    put32(&nodes.pages.raw(nodes.root)[20], nodes.root);
    EXPECT_NE(nodes.error_of([&] { nodes.tree.contains(number_key(100000)); }).find("circle"),
              std::string::npos);
    EXPECT_NE(nodes.check_text().find("twice"), std::string::npos);
}

TEST(IndexTreeDamage, NoticesEntriesBeyondThePage) {
    Damaged f;
    f.pages.raw(f.first_leaf())[479] = 0x80;
    EXPECT_NE(f.walk_error().find("beyond the page"), std::string::npos);
}

TEST(IndexTreeDamage, NoticesASharedStartThatIsTooLong) {
    Damaged f;
    put16(&f.pages.raw(f.first_leaf())[24], 4000);
    EXPECT_NE(f.walk_error().find("share"), std::string::npos);
}

TEST(IndexTreeDamage, NoticesEntriesTooShortForARow) {
    Damaged f;
    Page& page = f.pages.raw(f.first_leaf());
    page[24] = 0;
    page[28] = static_cast<std::uint8_t>(page[28] | 0x01); // an entry from 8 to 9
    EXPECT_NE(f.walk_error().find("too short"), std::string::npos);
}

TEST(IndexTreeDamage, CheckTellsWhatDisagrees) {
    Damaged f;
    const PageNumber leaf = f.first_leaf();
    put32(&f.pages.raw(leaf)[12], 77);
    put16(&f.pages.raw(leaf)[2], 9);
    std::string text = f.check_text();
    EXPECT_NE(text.find("names page 77 before it"), std::string::npos) << text;
    EXPECT_NE(text.find("states 9"), std::string::npos) << text;

    Damaged order;
    Page& page = order.pages.raw(order.first_leaf());
    std::swap(page[480 + 4], page[480 + 9 + 4]);
    text = order.check_text();
    EXPECT_NE(text.find("out of order"), std::string::npos) << text;

    Damaged copy;
    copy.pages.raw(copy.root)[480 + 4] ^= 1;
    text = copy.check_text();
    EXPECT_NE(text.find("is not the last entry"), std::string::npos) << text;
}

TEST(IndexTreeDamage, SurvivesRandomBytes) {
    std::mt19937 random(99);
    int errors = 0;
    for (int round = 0; round < 150; ++round) {
        Damaged f;
        f.pages.forgive();
        for (auto spoiled = 1 + random() % 6; spoiled > 0; --spoiled) {
            Page& page = f.pages.raw(1 + static_cast<PageNumber>(random() % (f.pages.page_count() - 1)));
            // Mostly headers, where it hurts.
            const std::size_t at = random() % 3 ? random() % 40 : random() % page.size();
            page[at] = static_cast<std::uint8_t>(random() % 4 ? random() % 12 : random());
        }
        std::vector<PageNumber> owned;
        f.tree.check(owned);
        for (int i = 0; i < 60; ++i) {
            const std::uint32_t number = random() % 6000;
            try {
                switch (random() % 4) {
                case 0:
                    f.tree.insert(number_key(number), row_number(number));
                    break;
                case 1:
                    f.tree.erase(number_key(number / 3 * 3), row_number(number / 3));
                    break;
                case 2:
                    f.tree.find_prefix(Key{0x7f, 0x80, 0x00, static_cast<std::uint8_t>(number >> 8)});
                    break;
                default:
                    f.tree.walk([](auto, auto) { return true; });
                }
            } catch (const basic::RunTimeError& error) {
                ASSERT_EQ(error.number(), 3049) << error.text();
                ++errors;
            }
        }
    }
    EXPECT_GT(errors, 300);
}

} // namespace
} // namespace tolva::jet
