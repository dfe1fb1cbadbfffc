#pragma once

#include <gtest/gtest.h>
#include <string>

namespace tolva::support {

/// Files by other programs whose every table and index is looked at, below the folder of the samples.
inline const auto sample_files = testing::Values(
    "mdb/delColTestV1997.mdb", "mdb/delTestV1997.mdb", "mdb/indexTestV1997.mdb", "mdb/overflowTestV1997.mdb",
    "mdb/testIndexCodesV1997.mdb", "mdb/testV1997.mdb", "mdb/DateTestDatabase.mdb",
    "mdb/bigIndexTestV2003.mdb", "mdb/compIndexTestV2000.mdb", "mdb/delColTestV2000.mdb",
    "mdb/delTestV2000.mdb", "mdb/fixedNumericTestV2000.mdb", "mdb/fixedTextTestV2000.mdb",
    "mdb/indexTestV2000.mdb", "mdb/overflowTestV2003.mdb", "mdb/test2V2000.mdb", "mdb/testPromotionV2000.mdb",
    "mdb/testUnicodeCompV2003.mdb", "desk/data/address.mdb", "desk/data/database.mdb",
    "desk/data/listings.mdb", "desk/data/messagedata.mdb", "desk/data/prospect.mdb", "desk/data/sold.mdb",
    "desk/data/zipcodes.mdb");

/// A file's name without folder and ending, for the name of its test.
inline std::string sample_name(const testing::TestParamInfo<const char*>& info) {
    const std::string path = info.param;
    const std::string name = path.substr(path.rfind('/') + 1);
    return name.substr(0, name.find('.'));
}

} // namespace tolva::support
