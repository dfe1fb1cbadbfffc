#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "jet/format.h"

namespace tolva::jet {

/// The least that must be read of a file to know what it is.
constexpr std::size_t recognition_size = 0x18 + 128;

/// The format of the file whose first bytes these are, with the file's own code page. Error 3343 when it is
/// none that we know, 3031 when it has a password or encoded pages.
Format recognise(const std::string& path, std::span<const std::uint8_t> start);

/// Masks or unmasks the masked stretch of page 0; each undoes the other.
void mask_header(const Format& format, std::span<std::uint8_t> page);

/// The commit bytes of page 0. Each user's 16-bit counter starts at 0x0100; zero says that this user's
/// writing was cut short.
bool commit_was_cut(const Format& format, std::span<const std::uint8_t> page);
void mark_commit(const Format& format, std::span<std::uint8_t> page);
void settle_commits(const Format& format, std::span<std::uint8_t> page);

/// The signature and the masked stretch of a new file: code page 1252, order "General", no password.
/// `created` is a moment in days since 1899-12-30.
void write_header(const Format& format, std::span<std::uint8_t> page, double created);

} // namespace tolva::jet
