#include <algorithm>
#include <ctime>
#include <iostream>

#include "basic/run_time_error.h"
#include "data/commands.h"
#include "files/command_line.h"

namespace {

using tolva::data::Command;

constexpr std::string_view program = "tolva-data";

void print_overview(std::ostream& out) {
    out << "usage: " << program << " COMMAND ARGUMENT...\n"
        << "Reads, writes and checks .mdb files.\n\n";
    for (const Command& command : tolva::data::commands()) {
        out << "  " << command.name << ' ' << command.arguments << "\n      " << command.summary << '\n';
    }
    out << "\n"
        << program << " COMMAND --help tells more of a command.\n"
        << "Ends with 0, with 1 when something failed or was found wrong, with 2 when called wrongly.\n";
}

void print_usage(std::ostream& out, const Command& command) {
    out << "usage: " << program << ' ' << command.name << ' ' << command.arguments << '\n';
}

bool asks_for_help(const std::string& argument) {
    return argument == "--help" || argument == "-h";
}

/// This machine's year, for query dates that have none.
int current_year() {
    const std::time_t now = std::time(nullptr);
    return std::localtime(&now)->tm_year + 1900;
}

int run(const std::vector<std::string>& words) {
    if (words.empty()) {
        print_overview(std::cerr);
        return tolva::data::exit_usage;
    }
    if (asks_for_help(words[0])) {
        print_overview(std::cout);
        return tolva::data::exit_success;
    }
    const auto all = tolva::data::commands();
    const auto command =
        std::find_if(all.begin(), all.end(), [&](const Command& each) { return each.name == words[0]; });
    if (command == all.end()) {
        std::cerr << program << ": no command \"" << words[0] << "\"; " << program << " --help lists them\n";
        return tolva::data::exit_usage;
    }
    const std::vector<std::string> arguments(words.begin() + 1, words.end());
    if (std::any_of(arguments.begin(), arguments.end(), asks_for_help)) {
        print_usage(std::cout, *command);
        std::cout << command->summary << "\n" << (command->details.empty() ? "" : "\n") << command->details;
        return tolva::data::exit_success;
    }
    if (arguments.size() < command->least_arguments || arguments.size() > command->most_arguments) {
        print_usage(std::cerr, *command);
        return tolva::data::exit_usage;
    }

    const auto disk = tolva::files::make_disk();
    tolva::data::Surroundings with{*disk, std::cin, std::cout, std::cerr, current_year()};
    return command->run(with, arguments);
}

} // namespace

int main(int argc, char** argv) {
    const tolva::files::CommandLine called(argc, argv);
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    try {
        const int code = run(called.words());
        std::cout.flush();
        if (!std::cout)
            throw tolva::basic::RunTimeError::with_text(75, "the output could not be written");
        return code;
    } catch (const tolva::basic::RunTimeError& error) {
        std::cout.flush();
        std::cerr << program << ": " << error.text() << '\n';
        return tolva::data::exit_failure;
    }
}
