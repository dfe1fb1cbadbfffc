#include "jet/header_page.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <numeric>

#include "basic/run_time_error.h"
#include "jet/bytes.h"

namespace tolva::jet {
namespace {

constexpr char signature[] = "\x00\x01\x00\x00Standard Jet DB";
constexpr std::size_t signature_size = sizeof signature; // with its closing zero
constexpr std::size_t version_offset = 0x14;
constexpr std::uint8_t jet3_version = 0, jet4_version = 1;
constexpr std::uint16_t western_page = 1252, general_order = 1033;

/// The cipher that masks the header: RC4 under a fixed key.
void apply_mask(std::span<std::uint8_t> bytes) {
    constexpr std::uint8_t key[] = {0xc7, 0xda, 0x39, 0x6b};
    std::array<std::uint8_t, 256> state;
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t other = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        other = static_cast<std::uint8_t>(other + state[i] + key[i % sizeof key]);
        std::swap(state[i], state[other]);
    }
    std::uint8_t one = 0;
    other = 0;
    for (std::uint8_t& byte : bytes) {
        ++one;
        other = static_cast<std::uint8_t>(other + state[one]);
        std::swap(state[one], state[other]);
        byte ^= state[static_cast<std::uint8_t>(state[one] + state[other])];
    }
}

/// The four bytes that repeat over the password's place: the whole days of the file's birth.
std::array<std::uint8_t, 4> password_mask(const Format& format, std::span<const std::uint8_t> page) {
    std::array<std::uint8_t, 4> mask{};
    if (format.header.password_date == 0)
        return mask;
    const double created = get_double(page.data() + format.header.password_date);
    if (created > -2147483648.0 && created < 2147483648.0)
        put32(mask.data(), static_cast<std::uint32_t>(static_cast<std::int32_t>(created)));
    return mask;
}

bool has_password(const Format& format, std::span<const std::uint8_t> page) {
    const auto mask = password_mask(format, page);
    for (std::size_t i = 0; i < format.header.password_size; ++i)
        if (page[format.header.password + i] != mask[i % mask.size()])
            return true;
    return false;
}

} // namespace

Format recognise(const std::string& path, std::span<const std::uint8_t> start) {
    if (start.size() < recognition_size || std::memcmp(start.data(), signature, signature_size) != 0 ||
        start[version_offset] > jet4_version)
        throw basic::RunTimeError(3343, path);
    Format format = start[version_offset] == jet4_version ? jet4_format : jet3_format;
    std::vector<std::uint8_t> plain(start.begin(), start.begin() + recognition_size);
    mask_header(format, plain);
    if (get32(plain.data() + format.header.page_key) != 0 || has_password(format, plain))
        throw basic::RunTimeError(3031);
    format.code_page = get16(plain.data() + format.header.code_page);
    return format;
}

void mask_header(const Format& format, std::span<std::uint8_t> page) {
    apply_mask(page.subspan(format.header.mask_start, format.header.mask_size));
}

bool commit_was_cut(const Format& format, std::span<const std::uint8_t> page) {
    for (std::size_t user = 0; user < format.header.commit_count; ++user)
        if (get16(page.data() + format.header.commit_bytes + 2 * user) == 0)
            return true;
    return false;
}

void mark_commit(const Format& format, std::span<std::uint8_t> page) {
    put16(page.data() + format.header.commit_bytes, 0);
}

void settle_commits(const Format& format, std::span<std::uint8_t> page) {
    constexpr std::uint16_t at_rest = 0x0100;
    for (std::size_t user = 0; user < format.header.commit_count; ++user) {
        std::uint8_t* counter = page.data() + format.header.commit_bytes + 2 * user;
        if (get16(counter) == 0)
            put16(counter, at_rest);
    }
}

void write_header(const Format& format, std::span<std::uint8_t> page, double created) {
    const bool jet4 = format.version == Format::Version::jet4;
    std::memcpy(page.data(), signature, signature_size);
    page[version_offset] = jet4 ? jet4_version : jet3_version;
    std::uint8_t* plain = page.data() + format.header.mask_start;
    // The pages of the system tables, as every file has them.
    constexpr std::uint8_t start[] = {0, 1, 0, 0, 1, 1, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 5};
    std::copy(std::begin(start), std::end(start), plain);
    put16(page.data() + format.header.code_page, western_page);
    if (format.header.password_date != 0)
        put_double(page.data() + format.header.password_date, created);
    const auto mask = password_mask(format, page);
    for (std::size_t i = 0; i < format.header.password_size; ++i)
        page[format.header.password + i] = mask[i % mask.size()];
    put16(page.data() + format.header.text_order, general_order);
    mask_header(format, page);
    if (jet4) {
        // Behind the mask: a number and a version that files of this kind have in common.
        constexpr std::uint8_t behind[] = {0x54, 0x06, 0, 0, '4', '.', '0'};
        std::copy(std::begin(behind), std::end(behind),
                  page.begin() +
                      static_cast<std::ptrdiff_t>(format.header.mask_start + format.header.mask_size));
    }
    for (std::size_t user = 0; user < format.header.commit_count; ++user)
        put16(page.data() + format.header.commit_bytes + 2 * user, 0x0100);
}

} // namespace tolva::jet
