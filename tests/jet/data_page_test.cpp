#include <gtest/gtest.h>

#include "basic/run_time_error.h"
#include "jet/bytes.h"
#include "jet/data_page.h"

namespace tolva::jet {
namespace {

const std::string path = "a.mdb";
constexpr PageNumber number = 9;
using Bytes = std::vector<std::uint8_t>;

Bytes empty_page() {
    Bytes page(jet4_format.page_size);
    DataPageEditor::start(jet4_format, page, 77);
    return page;
}

DataPageEditor editor(Bytes& page) {
    return {jet4_format, path, number, page};
}

/// A page with these slots as they are, and bytes that tell their place.
Bytes page_with_slots(const std::vector<std::uint16_t>& slots) {
    Bytes page = empty_page();
    put16(page.data() + jet4_format.data.row_count, slots.size());
    for (std::size_t i = 0; i < slots.size(); ++i)
        put16(page.data() + jet4_format.data.slots + 2 * i, slots[i]);
    return page;
}

std::size_t size_of(const Bytes& page, std::size_t slot) {
    return DataPageView(jet4_format, path, number, page).record(slot).size();
}

TEST(DataPage, ARecordEndsAtTheNextGreaterOffsetTombstonesIncluded) {
    const Bytes page = page_with_slots({4000, 0xc000 | 3900, 3800});
    EXPECT_EQ(size_of(page, 0), 96u);
    EXPECT_EQ(size_of(page, 2), 100u);
}

TEST(DataPage, RecordsMayStandInAnyOrder) {
    const Bytes page = page_with_slots({3800, 4000, 3900});
    EXPECT_EQ(size_of(page, 0), 100u);
    EXPECT_EQ(size_of(page, 1), 96u);
    EXPECT_EQ(size_of(page, 2), 100u);
}

TEST(DataPage, EqualOffsetsAreLegal) {
    const Bytes page = page_with_slots({0xd000, 0xd000, 4000, 0xc000 | 4000, 3900});
    EXPECT_EQ(size_of(page, 2), 96u);
    EXPECT_EQ(size_of(page, 4), 100u);
    EXPECT_EQ(size_of(page, 3), 0u);
}

TEST(DataPage, ATombstoneHasNoBytesOfALiveRecord) {
    const Bytes page = page_with_slots({3800, 0xc000 | 4000, 4000, 3900});
    EXPECT_EQ(size_of(page, 1), 0u);
    EXPECT_EQ(size_of(page, 2), 96u);
    Bytes changed = page;
    ASSERT_TRUE(editor(changed).put(3, Bytes(5, 1), 0));
    EXPECT_EQ(size_of(changed, 2), 96u);
    EXPECT_EQ(size_of(changed, 0), 100u);
}

TEST(DataPage, ATombstoneThatKeepsBytesIsNotTakenForANewRecord) {
    // It may be a place that a moved row passed.
    const Bytes page = page_with_slots({4000, 0xc000 | 3990});
    EXPECT_EQ(DataPageView(jet4_format, path, number, page).slot_for(10), 2);
}

TEST(DataPage, SlotsOutsideTheRecordsAreDamage) {
    for (const std::uint16_t slot : {std::uint16_t{5}, std::uint16_t{15}, std::uint16_t{0x1001}}) {
        const Bytes page = page_with_slots({slot});
        EXPECT_THROW(DataPageView(jet4_format, path, number, page), basic::RunTimeError) << slot;
    }
    Bytes page = empty_page();
    put16(page.data() + jet4_format.data.row_count, 5000);
    EXPECT_THROW(DataPageView(jet4_format, path, number, page), basic::RunTimeError);
}

TEST(DataPage, ChangedRecordsKeepTheOthersAndTheFreeSpaceTrue) {
    Bytes page = empty_page();
    std::vector<Bytes> model;
    unsigned random = 12345;
    const auto next = [&](unsigned below) { return (random = random * 1103515245 + 12345) / 65536 % below; };
    for (int round = 0; round < 4000; ++round) {
        const std::size_t slot = next(static_cast<unsigned>(model.size()) + 1);
        const Bytes record(1 + next(300), static_cast<std::uint8_t>(round));
        const bool bury = next(3) == 0 && slot < model.size();
        if (bury) {
            editor(page).bury(static_cast<std::uint8_t>(slot));
            model[slot].clear();
        } else if (model.size() < 60 || slot < model.size()) {
            std::size_t used = 0;
            for (const Bytes& each : model)
                used += each.size() + 2;
            const std::size_t old = slot < model.size() ? model[slot].size() : 0;
            const std::size_t extra = slot == model.size() ? 2 : 0;
            const bool fits = used - old + record.size() + extra <= 4096 - 14;
            ASSERT_EQ(editor(page).put(static_cast<std::uint8_t>(slot), record, 0), fits);
            if (!fits)
                continue;
            if (slot == model.size())
                model.emplace_back();
            model[slot] = record;
        }
        const DataPageView view(jet4_format, path, number, page);
        ASSERT_EQ(view.slots(), model.size());
        ASSERT_TRUE(view.in_order());
        ASSERT_EQ(view.free_space(), view.actual_free_space());
        for (std::size_t i = 0; i < model.size(); ++i) {
            const auto bytes = view.record(i);
            if (!model[i].empty()) {
                ASSERT_EQ(Bytes(bytes.begin(), bytes.end()), model[i]);
            }
        }
    }
}

TEST(DataPage, APageOutOfOrderIsBroughtIntoOrderByAChange) {
    Bytes page = page_with_slots({3800, 4000, 3900});
    for (std::size_t i = 3800; i < 4096; ++i)
        page[i] = static_cast<std::uint8_t>(i);
    const auto record = [&](std::size_t slot) {
        const auto bytes = DataPageView(jet4_format, path, number, page).record(slot);
        return Bytes(bytes.begin(), bytes.end());
    };
    const Bytes first = record(0), last = record(2);
    ASSERT_TRUE(editor(page).put(1, Bytes(7, 0xee), 0));
    EXPECT_TRUE(DataPageView(jet4_format, path, number, page).in_order());
    EXPECT_EQ(record(0), first);
    EXPECT_EQ(record(1), Bytes(7, 0xee));
    EXPECT_EQ(record(2), last);
}

TEST(DataPage, ANewRecordTakesATombstoneBehindTheLastLiveOneFirst) {
    Bytes page = empty_page();
    for (std::uint8_t slot = 0; slot < 4; ++slot)
        ASSERT_TRUE(editor(page).put(slot, Bytes(10, slot), 0));
    editor(page).bury(1);
    EXPECT_EQ(editor(page).view().slot_for(10), 4);
    editor(page).bury(3);
    EXPECT_EQ(editor(page).view().slot_for(10), 3);
}

TEST(DataPage, HoldsAtMost255Slots) {
    Bytes page = empty_page();
    for (int slot = 0; slot < 255; ++slot)
        ASSERT_TRUE(editor(page).put(static_cast<std::uint8_t>(slot), Bytes(4), 0));
    EXPECT_FALSE(editor(page).view().slot_for(4).has_value());
    EXPECT_FALSE(editor(page).put(255, Bytes(4), 0));
    editor(page).bury(100);
    EXPECT_EQ(editor(page).view().slot_for(4), 100);
}

} // namespace
} // namespace tolva::jet
