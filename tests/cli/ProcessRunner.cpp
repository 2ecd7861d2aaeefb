#include "ProcessRunner.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
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

// Pump writes input to the child and collects its output until both output pipes close.
void Pump(int inFd, int outFd, int errFd, const std::string& input, ProcessResult& result) {
    std::size_t written = 0;
    pollfd fds[3] = {{outFd, POLLIN, 0}, {errFd, POLLIN, 0}, {inFd, POLLOUT, 0}};
    if (input.empty()) {
        close(inFd);
        fds[2].fd = -1;
    }
    std::string* sinks[2] = {&result.out, &result.err};
    while (fds[0].fd >= 0 || fds[1].fd >= 0) {
        if (poll(fds, 3, 30000) <= 0) {
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

} // namespace

ProcessResult RunCli(const std::vector<std::string>& args, const std::string& input,
                     const std::map<std::string, std::string>& env) {
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
    ProcessResult result;
    Pump(in[1], out[0], err[0], input, result);
    int wstatus = 0;
    waitpid(pid, &wstatus, 0);
    result.status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
    return result;
}

} // namespace kelvora::testing
