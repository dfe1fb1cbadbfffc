#pragma once

#include <cstddef>
#include <cstdint>

namespace tolva::jet {

/// Everything in which the versions of the file differ, in one place. Offsets and sizes are bytes.
struct Format {
    enum class Version { jet3, jet4 };

    Version version;
    std::size_t page_size;
};

extern const Format jet4_format;

} // namespace tolva::jet
