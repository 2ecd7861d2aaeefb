#include "CliRun.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace kelvora::testing {
namespace {

std::vector<char*> Pointers(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    for (std::string& s : strings) {
        pointers.push_back(s.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// WaitFor reaps the child, killing it when it outlives the deadline.
int WaitFor(pid_t pid, std::chrono::steady_clock::time_point deadline) {
    int wstatus = 0;
    while (waitpid(pid, &wstatus, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            kill(pid, SIGKILL);
            waitpid(pid, &wstatus, 0);
            return -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
}

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
    std::vector<std::string> argv = {KELVORA_CLI_PATH};
    argv.insert(argv.end(), args.begin(), args.end());
    std::vector<std::string> envp;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (std::strncmp(*entry, "KELVORA_PASSPHRASE=", 19) != 0) {
            envp.emplace_back(*entry);
        }
    }
    for (const auto& [name, value] : env) {
        envp.push_back(name + "=" + value);
    }
    std::vector<char*> argPointers = Pointers(argv);
    std::vector<char*> envPointers = Pointers(envp);
    int out[2], err[2];
    if (pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) {
        return {};
    }
    const pid_t pid = fork();
    if (pid == 0) {
        setsid();
        const int nothing = open("/dev/null", O_RDONLY);
        dup2(nothing, STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        dup2(err[1], STDERR_FILENO);
        execve(argPointers[0], argPointers.data(), envPointers.data());
        _exit(127);
    }
    close(out[1]);
    close(err[1]);
    const auto start = std::chrono::steady_clock::now();
    if (signal != 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(afterMs));
        kill(pid, signal);
    }
    // The tests' processes write little: the pipes hold it all until the process ends.
    const int status = WaitFor(pid, start + std::chrono::milliseconds(afterMs + 5000));
    return CliResult{status, Drain(out[0]), Drain(err[0])};
}

} // namespace kelvora::testing
