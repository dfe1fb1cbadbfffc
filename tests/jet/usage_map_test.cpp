#include <gtest/gtest.h>
#include <set>

#include "jet/bytes.h"
#include "jet/definition_writer.h"
#include "jet/memory_pager.h"
#include "jet/page_space.h"
#include "support/jet_files.h"

namespace tolva::jet {
namespace {

using support::error_of;

/// A file with a map of free pages that starts as a new file's does.
class Maps : public testing::Test {
  protected:
    Maps() {
        for (int i = 0; i < 6; ++i)
            pager.append();
        DataPageEditor::start(jet4_format, pager.modify(1), 1);
        std::vector<std::uint8_t> map(jet4_format.map.inline_size, 0xff);
        std::fill_n(map.begin(), 5, std::uint8_t{0});
        map[5] = 0xc0;
        DataPageEditor(jet4_format, pager.path(), 1, pager.modify(1)).put(0, map, 0);
    }
    UsageMap free_pages() { return {pager, {1, 0}, 0, UsageMap::Kind::global}; }
    void grow_to(PageNumber pages) {
        while (pager.page_count() < pages)
            space.allocate();
    }

    MemoryPager pager{jet4_format, "a.mdb"};
    PageSpace space{pager};
    MapPages map_pages{pager, space};
};

TEST_F(Maps, EachNewPageIsFreeNoMore) {
    for (int i = 0; i < 1200; ++i) {
        const PageNumber page = space.allocate();
        ASSERT_FALSE(free_pages().contains(page)) << page;
    }
    EXPECT_EQ(free_pages().pages(), std::vector<PageNumber>{});
    // Pages that are not there yet are free by the map.
    EXPECT_TRUE(free_pages().contains(pager.page_count()));
    EXPECT_TRUE(free_pages().contains(pager.page_count() + 40000));
}

TEST_F(Maps, TheMapOfFreePagesGoesOverToReferencesBehindItsWindow) {
    grow_to(512);
    EXPECT_TRUE(free_pages().map_pages().empty());
    grow_to(514);
    ASSERT_EQ(free_pages().map_pages().size(), 1u);
    EXPECT_FALSE(free_pages().contains(free_pages().map_pages().front()));
    for (PageNumber page = 0; page < pager.page_count(); ++page)
        ASSERT_FALSE(free_pages().contains(page));
}

TEST_F(Maps, AReleasedPageIsHandedOutAgainBeforeTheFileGrows) {
    grow_to(600);
    const PageNumber end = pager.page_count();
    for (const PageNumber page : {100u, 599u, 7u})
        space.release(page);
    EXPECT_EQ(space.allocate(), 7u);
    EXPECT_EQ(space.allocate(), 100u);
    EXPECT_EQ(space.allocate(), 599u);
    EXPECT_EQ(space.allocate(), end);
}

TEST_F(Maps, AHandedOutPageIsBlank) {
    const PageNumber page = space.allocate();
    const auto bytes = pager.modify(page);
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0xee});
    space.release(page);
    ASSERT_EQ(space.allocate(), page);
    for (const std::uint8_t byte : *pager.read(page))
        ASSERT_EQ(byte, 0);
}

TEST_F(Maps, AWindowThatMovedOnStaysWithoutThePagesBeforeIt) {
    // As another program leaves it: the window starts at page 512.
    grow_to(500);
    std::vector<std::uint8_t> map(jet4_format.map.inline_size, 0xff);
    map[0] = 0;
    put32(map.data() + 1, 480);
    for (PageNumber page = 480; page < 500; ++page)
        map[5 + (page - 480) / 8] &= static_cast<std::uint8_t>(~(1 << page % 8));
    DataPageEditor(jet4_format, pager.path(), 1, pager.modify(1)).put(0, map, 0);
    ASSERT_EQ(free_pages().first_told(), 480u);
    EXPECT_FALSE(free_pages().contains(100));
    EXPECT_EQ(space.allocate(), 500u);
    // A page before the window that becomes free makes the map tell of all.
    space.release(100);
    EXPECT_EQ(free_pages().first_told(), 0u);
    EXPECT_EQ(free_pages().pages(), std::vector<PageNumber>{100});
    EXPECT_EQ(space.allocate(), 100u);
}

TEST_F(Maps, PagesInUseAreNeverHandedOutWhateverTheMapSays) {
    grow_to(20);
    space.release(10);
    space.release(11);
    PageSpace guarded(pager, [&] {
        std::vector<bool> used(pager.page_count());
        used[10] = true;
        return used;
    });
    EXPECT_EQ(guarded.allocate(), 11u);
    EXPECT_EQ(guarded.allocate(), 20u);
    EXPECT_FALSE(free_pages().contains(10));
}

TEST_F(Maps, AnOwnedMapBehavesLikeASetAndGoesOverToReferences) {
    const RecordPlace place = map_pages.add();
    grow_to(40000);
    std::set<PageNumber> model;
    unsigned random = 7;
    const auto next = [&](unsigned below) { return (random = random * 1103515245 + 12345) / 16 % below; };
    for (int round = 0; round < 3000; ++round) {
        UsageMap map(pager, place, 2, UsageMap::Kind::owned);
        // First near together, then all over the file.
        const PageNumber page = round < 500 ? 300 + next(400) : next(40000);
        const bool member = next(3) != 0;
        space.set(map, page, member);
        if (member)
            model.insert(page);
        else
            model.erase(page);
        if (round == 499) {
            EXPECT_TRUE(map.map_pages().empty());
        }
        if (round % 100 == 0 || round == 2999) {
            ASSERT_EQ(map.pages(), (std::vector<PageNumber>(model.begin(), model.end()))) << round;
        }
        ASSERT_EQ(map.contains(page), member);
    }
    EXPECT_EQ(UsageMap(pager, place, 2, UsageMap::Kind::owned).map_pages().size(), 2u);
}

TEST_F(Maps, AMapOfRoomyPagesSlidesItsWindow) {
    const RecordPlace place = map_pages.add();
    grow_to(3000);
    UsageMap map(pager, place, 2, UsageMap::Kind::free);
    for (const PageNumber page : {10u, 400u, 500u})
        space.set(map, page, true);
    EXPECT_EQ(map.pages(), (std::vector<PageNumber>{10, 400, 500}));
    space.set(map, 900, true);
    EXPECT_EQ(map.pages(), (std::vector<PageNumber>{400, 500, 900})) << "the farthest is forgotten";
    space.set(map, 20, true);
    EXPECT_EQ(map.pages(), (std::vector<PageNumber>{20, 400, 500}));
    EXPECT_TRUE(map.map_pages().empty());
}

TEST_F(Maps, NonsenseIsDamage) {
    const RecordPlace place = map_pages.add();
    const auto spoil = [&](std::vector<std::uint8_t> bytes) {
        bytes.resize(jet4_format.map.inline_size);
        DataPageEditor(jet4_format, pager.path(), place.page, pager.modify(place.page))
            .put(place.slot, bytes, 0);
        return error_of([&] {
            UsageMap map(pager, place, 2, UsageMap::Kind::owned);
            map.pages();
            map.contains(5);
            space.set(map, 5, true);
        });
    };
    EXPECT_EQ(spoil({2}), 3049);
    EXPECT_EQ(spoil({1, 0xff, 0xff, 0xff, 0xff}), 3049);
    EXPECT_EQ(spoil({1, 2, 0, 0, 0}), 3049) << "page 2 is no map";
    EXPECT_EQ(error_of([&] { UsageMap(pager, {4000000, 0}, 2, UsageMap::Kind::owned); }), 3049);
    EXPECT_EQ(error_of([&] { UsageMap(pager, {1, 77}, 2, UsageMap::Kind::owned); }), 3049);
}

} // namespace
} // namespace tolva::jet
