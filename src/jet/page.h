#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace tolva::jet {

using PageNumber = std::uint32_t;

/// The bytes of one page, in one piece with the count of its holders: what a walk over many pages costs is
/// the number of places in memory that it goes to.
class Page {
  public:
    static constexpr std::size_t largest = 4096; ///< in any version of the file

    /// Zeros.
    explicit Page(std::size_t size) : size_(size) { std::fill(begin(), end(), std::uint8_t{0}); }
    explicit Page(std::span<const std::uint8_t> content) : size_(content.size()) {
        std::copy(content.begin(), content.end(), begin());
    }
    Page(const Page& other) : Page(std::span<const std::uint8_t>(other)) {}
    Page& operator=(const Page& other) = delete;

    std::size_t size() const { return size_; }
    const std::uint8_t* data() const { return bytes_.data(); }
    std::uint8_t* data() { return bytes_.data(); }
    const std::uint8_t* begin() const { return data(); }
    std::uint8_t* begin() { return data(); }
    const std::uint8_t* end() const { return data() + size_; }
    std::uint8_t* end() { return data() + size_; }
    std::uint8_t operator[](std::size_t at) const { return bytes_[at]; }
    std::uint8_t& operator[](std::size_t at) { return bytes_[at]; }

  private:
    std::size_t size_;
    std::array<std::uint8_t, largest> bytes_;
};

/// A page as it stood when it was read; stays alive and unchanged while held, whatever is written since.
using PageRef = std::shared_ptr<const Page>;

} // namespace tolva::jet
