#include "cli/TerminalPrompt.h"

#include "common/Bytes.h"

#include <cstdio>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace kelvora::cli {
namespace {

class TerminalPrompt final : public PassphrasePrompt {
public:
    explicit TerminalPrompt(int fd) : m_fd(fd) {}
    ~TerminalPrompt() override { close(m_fd); }

    std::optional<std::string> Ask(std::string_view prompt) override {
        Write(prompt);
        termios saved{};
        const bool canHide = tcgetattr(m_fd, &saved) == 0;
        if (canHide) {
            termios silent = saved;
            silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
            tcsetattr(m_fd, TCSAFLUSH, &silent);
        }
        std::optional<std::string> line = ReadLine();
        if (canHide) {
            tcsetattr(m_fd, TCSAFLUSH, &saved);
        }
        Write("\n");
        return line;
    }

private:
    void Write(std::string_view text) {
        if (write(m_fd, text.data(), text.size()) < 0) {
            return; // a prompt that cannot be shown still reads the answer
        }
    }

    std::optional<std::string> ReadLine() {
        std::string line;
        char c = 0;
        while (true) {
            const ssize_t got = read(m_fd, &c, 1);
            if (got <= 0) {
                if (line.empty()) {
                    return std::nullopt;
                }
                break;
            }
            if (c == '\n') {
                break;
            }
            line.push_back(c);
        }
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        return line;
    }

    int m_fd;
};

} // namespace

std::unique_ptr<PassphrasePrompt> OpenTerminalPrompt() {
    const int fd = open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        return nullptr;
    }
    return std::make_unique<TerminalPrompt>(fd);
}

} // namespace kelvora::cli
