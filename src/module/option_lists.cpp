#include "module/option_lists.h"

#include "basic/delimited_file.h"
#include "basic/text.h"

namespace tolva::module {

namespace {

std::string list_path(const std::string& appfolder, const std::string& name) {
    return appfolder + "\\data\\" + name + ".txt";
}

constexpr const char* features_name = "features";

basic::DelimitedReader open_list(files::FileSystem& disk, const std::string& appfolder,
                                 const std::string& name) {
    const files::Bytes content = files::read_whole(disk, list_path(appfolder, name));
    return basic::DelimitedReader(std::string(content.begin(), content.end()));
}

void replace_list(files::FileSystem& disk, const std::string& appfolder, const std::string& name,
                  const basic::DelimitedWriter& content) {
    const std::string& bytes = content.bytes();
    files::replace_whole(disk, list_path(appfolder, name),
                         {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

} // namespace

std::vector<std::string> read_option_list(files::FileSystem& disk, const std::string& appfolder,
                                          const std::string& name) {
    basic::DelimitedReader reader = open_list(disk, appfolder, name);
    std::vector<std::string> items;
    while (!reader.at_end()) {
        std::string item = basic::trim(reader.read());
        if (!item.empty())
            items.push_back(std::move(item));
    }
    return items;
}

void write_option_list(files::FileSystem& disk, const std::string& appfolder, const std::string& name,
                       const std::string& text) {
    basic::DelimitedWriter writer;
    writer.print(basic::trim(text));
    replace_list(disk, appfolder, name, writer);
}

Features read_features(files::FileSystem& disk, const std::string& appfolder) {
    basic::DelimitedReader reader = open_list(disk, appfolder, features_name);
    Features features;
    for (std::string& feature : features)
        feature = basic::trim(reader.read());
    return features;
}

void write_features(files::FileSystem& disk, const std::string& appfolder, const Features& features) {
    basic::DelimitedWriter writer;
    for (const std::string& feature : features)
        writer.write(basic::trim(feature));
    replace_list(disk, appfolder, features_name, writer);
}

} // namespace tolva::module
