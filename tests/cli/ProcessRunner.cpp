#include "ProcessRunner.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace kelvora::testing {
namespace {

std::vector<std::string> ChildEnvironment(const std::map<std::string, std::string>& extra) {
    std::vector<std::string> env;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (std::strncmp(*entry, "KELVORA_PASSPHRASE=", 19) != 0) {
            env.emplace_back(*entry);
        }
    }
    for (const auto& [name, value] : extra) {
        env.push_back(name + "=" + value);
    }
    return env;
}

std::vector<char*> Pointers(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    for (std::string& s : strings) {
        pointers.push_back(s.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

using Clock = std::chrono::steady_clock;

// Signal is sent to the child once `at` has come, if set; `sent` records when.
struct Signal {
    pid_t pid = 0;
    int number = 0;
    Clock::time_point at;
    std::optional<Clock::time_point> sent;
};

int PollTimeout(const Signal* signal) {
    constexpr int kNoSignalTimeoutMs = 30000;
    constexpr int kKillAfterMs = 5000;
    if (signal == nullptr) {
        return kNoSignalTimeoutMs;
    }
    const Clock::time_point due =
        signal->sent ? *signal->sent + std::chrono::milliseconds(kKillAfterMs) : signal->at;
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(due - Clock::now());
    return static_cast<int>(std::max<std::int64_t>(0, left.count()));
}

// Deliver sends the signal when due, and kills a child that outlived it by 5 seconds.
void Deliver(Signal* signal) {
    if (signal == nullptr || PollTimeout(signal) > 0) {
        return;
    }
    if (!signal->sent) {
        kill(signal->pid, signal->number);
        signal->sent = Clock::now();
    } else {
        kill(signal->pid, SIGKILL);
    }
}

// Pump writes input to the child and collects its output until both output pipes close.
void Pump(int inFd, int outFd, int errFd, const std::string& input, ProcessResult& result,
          Signal* signal = nullptr) {
    std::size_t written = 0;
    pollfd fds[3] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}, {inFd, POLLOUT, 0}};
    if (input.empty()) {
        close(inFd);
        fds[2].fd = -1;
    }
    std::string* sinks[2] = {&result.out, &result.err};
    while (fds[0].fd >= 0 || fds[1].fd >= 0) {
        const int ready = poll(fds, 3, PollTimeout(signal));
        Deliver(signal);
        if (ready < 0 || (ready == 0 && signal == nullptr)) {
            break;
        }
        for (int i = 0; i < 2; ++i) {
            if (fds[i].fd >= 0 && (fds[i].revents & (POLLIN | POLLHUP)) != 0) {
                char buffer[65536];
                const ssize_t got = read(fds[i].fd, buffer, sizeof buffer);
                if (got <= 0) {
                    close(fds[i].fd);
                    fds[i].fd = -1;
                } else {
                    sinks[i]->append(buffer, static_cast<std::size_t>(got));
                }
            }
        }
        if (fds[2].fd >= 0 && (fds[2].revents & (POLLOUT | POLLERR | POLLHUP)) != 0) {
            const ssize_t put = write(inFd, input.data() + written, input.size() - written);
            written += put > 0 ? static_cast<std::size_t>(put) : input.size();
            if (written >= input.size()) {
                close(inFd);
                fds[2].fd = -1;
            }
        }
    }
}

// Run starts the built kelvora-cli and pumps its streams; with signal set, signal->pid is
// filled in and the signal delivered as the run goes.
ProcessResult Run(const std::vector<std::string>& args, const std::string& input,
                  const std::map<std::string, std::string>& env, Signal* signal) {
    std::signal(SIGPIPE, SIG_IGN); // a child that exits early must not kill the test
    std::vector<std::string> argv = {KELVORA_CLI_PATH};
    argv.insert(argv.end(), args.begin(), args.end());
    std::vector<std::string> envp = ChildEnvironment(env);
    std::vector<char*> argPointers = Pointers(argv);
    std::vector<char*> envPointers = Pointers(envp);

    int in[2], out[2], err[2];
    if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) {
        return {};
    }
    const pid_t pid = fork();
    if (pid == 0) {
        setsid();
        dup2(in[0], STDIN_FILENO);
        dup2(out[1], STDOUT_FILENO);
        dup2(err[1], STDERR_FILENO);
        execve(argPointers[0], argPointers.data(), envPointers.data());
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    close(err[1]);
    if (signal != nullptr) {
        signal->pid = pid;
    }
    ProcessResult result;
    Pump(in[1], out[0], err[0], input, result, signal);
    int wstatus = 0;
    waitpid(pid, &wstatus, 0);
    result.status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
    return result;
}

} // namespace

ProcessResult RunCli(const std::vector<std::string>& args, const std::string& input,
                     const std::map<std::string, std::string>& env) {
    return Run(args, input, env, nullptr);
}

SignalledResult RunCliSignalled(const std::vector<std::string>& args,
                                const std::map<std::string, std::string>& env, int signal,
                                int afterMs) {
    Signal delivery{0, signal, Clock::now() + std::chrono::milliseconds(afterMs), std::nullopt};
    SignalledResult result;
    static_cast<ProcessResult&>(result) = Run(args, {}, env, &delivery);
    if (result.status >= 0 && delivery.sent) {
        result.secondsToEnd = std::chrono::duration<double>(Clock::now() - *delivery.sent).count();
    }
    return result;
}

} // namespace kelvora::testing
