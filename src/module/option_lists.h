#pragma once

#include <array>
#include <string>
#include <vector>

#include "files/file_system.h"
#include "module/settings.h"

namespace tolva::module {

/// The text lists beside the stores, named as their files in the data folder without ".txt". Reading one that
/// is absent is error 53.
constexpr const char* construction_list = "construction";
constexpr const char* basement_list = "basement";
constexpr const char* garage_list = "garage";
constexpr const char* listingsource_list = "listingsource";

/// How warm a prospect is: the one list that is no file.
constexpr const char* interest_levels[] = {"Hot (In Market Now)", "Warm (In Market Soon)",
                                           "Cold (In Market in Future)"};

/// The items in order, trimmed, without the empty ones. A comma parts items as a line end does, unless double
/// quotes hold it.
std::vector<std::string> read_option_list(files::FileSystem& disk, const std::string& appfolder,
                                          const std::string& name);

/// Replaces the list by the trimmed text, written in one go as typed: an entry with a comma comes back as
/// two.
void write_option_list(files::FileSystem& disk, const std::string& appfolder, const std::string& name,
                       const std::string& text);

using Features = std::array<std::string, feature_count>;

/// Exactly as many items as there are features, each trimmed; a file with fewer is error 62.
Features read_features(files::FileSystem& disk, const std::string& appfolder);
/// Each entry on a line of its own between double quotes, so that empty ones and commas survive.
void write_features(files::FileSystem& disk, const std::string& appfolder, const Features& features);

} // namespace tolva::module
