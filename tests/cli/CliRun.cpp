#include "CliRun.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace kelvora::testing {
namespace {

std::string Drain(int fd) {
    std::string text;
    char buffer[4096];
    for (ssize_t got; (got = read(fd, buffer, sizeof buffer)) > 0;) {
        text.append(buffer, static_cast<std::size_t>(got));
    }
    close(fd);
    return text;
}

} // namespace

CliResult RunProcess(const std::vector<std::string>& args, const Env& env, int signal,
                     int afterMs) {
    std::vector<std::string> strings = {KELVORA_CLI_PATH};
    strings.insert(strings.end(), args.begin(), args.end());
    const std::size_t envStart = strings.size();
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (std::strncmp(*entry, "KELVORA_PASSPHRASE=", 19) != 0) {
            strings.emplace_back(*entry);
        }
    }
    for (const auto& [name, value] : env) {
        strings.push_back(name + "=" + value);
    }
    std::vector<char*> pointers;
    for (std::string& s : strings) {
        pointers.push_back(s.data());
    }
    pointers.insert(pointers.begin() + static_cast<std::ptrdiff_t>(envStart), nullptr);
    pointers.push_back(nullptr);
    int out[2], err[2];
    if (pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) {
        return {};
    }
    // A session of its own has no terminal; standard input is empty.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err[1], STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t pid = 0;
    const int spawned = posix_spawn(&pid, pointers[0], &actions, &attributes, pointers.data(),
                                    pointers.data() + envStart + 1);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    close(out[1]);
    close(err[1]);
    if (spawned != 0) {
        return {-1, Drain(out[0]), Drain(err[0])};
    }
    if (signal != 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(afterMs));
        kill(pid, signal);
    }
    // A process still running 5 seconds later is killed. The tests' processes write little:
    // the pipes hold it all until the process ends.
    int wstatus = 0;
    for (int waited = 0; waitpid(pid, &wstatus, WNOHANG) == 0; waited += 10) {
        if (waited > 5000) {
            kill(pid, SIGKILL);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    const int status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
    return {status, Drain(out[0]), Drain(err[0])};
}

} // namespace kelvora::testing
