#ifndef _WIN32

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include "support/process.h"

extern char** environ;

namespace tolva::support {

struct Process::System {
    pid_t id = -1;
    bool over = true;
    int code = not_found;

    void ended_with(int status) {
        over = true;
        code = WIFEXITED(status) ? WEXITSTATUS(status) : killed;
    }
};

Process::Process(const std::vector<std::string>& words, const Streams& streams)
    : system_(std::make_unique<System>()) {
    posix_spawn_file_actions_t files;
    ::posix_spawn_file_actions_init(&files);
    const auto file_for = [&](int stream, const std::string& file, int mode) {
        ::posix_spawn_file_actions_addopen(&files, stream, file.empty() ? "/dev/null" : file.c_str(), mode,
                                           0666);
    };
    file_for(0, streams.in, O_RDONLY);
    file_for(1, streams.out, O_WRONLY | O_CREAT | O_TRUNC);
    file_for(2, streams.err, O_WRONLY | O_CREAT | O_TRUNC);
    std::vector<std::string> copies = words;
    std::vector<char*> arguments;
    for (std::string& word : copies)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    system_->over =
        ::posix_spawnp(&system_->id, arguments[0], &files, nullptr, arguments.data(), environ) != 0;
    ::posix_spawn_file_actions_destroy(&files);
}

Process::~Process() {
    kill();
    wait();
}

bool Process::running() {
    int status = 0;
    if (!system_->over && ::waitpid(system_->id, &status, WNOHANG) == system_->id)
        system_->ended_with(status);
    return !system_->over;
}

void Process::kill() {
    if (running())
        ::kill(system_->id, SIGKILL);
}

int Process::wait() {
    int status = 0;
    if (!system_->over && ::waitpid(system_->id, &status, 0) == system_->id)
        system_->ended_with(status);
    return system_->code;
}

} // namespace tolva::support

#endif
