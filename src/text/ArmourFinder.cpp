#include "text/ArmourFinder.h"

#include <algorithm>

namespace kelvora {
namespace {

// The cipher's block: an encrypted text decodes to a whole number of them.
constexpr std::size_t kCipherBlock = 32;
// How many lines at either end of a run may be words written against the text.
constexpr std::size_t kMaxStrayLines = 2;

bool IsBase64Character(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '/';
}

// Unquoted drops a mail's quote marks and the blanks around the line.
std::string_view Unquoted(std::string_view line) {
    const std::size_t start = line.find_first_not_of(" \t>");
    if (start == std::string_view::npos) {
        return {};
    }
    const std::size_t end = line.find_last_not_of(" \t");
    return line.substr(start, end - start + 1);
}

// ArmourLine is one unquoted line that can be part of an encrypted text.
struct ArmourLine {
    std::string_view characters; // without the "=" padding
    bool padded = false;
    std::size_t number = 0;
};

bool ReadArmourLine(std::string_view line, ArmourLine& armour) {
    const std::size_t padding = line.find('=');
    const std::string_view characters = line.substr(0, padding);
    if (characters.empty() ||
        !std::all_of(characters.begin(), characters.end(), IsBase64Character)) {
        return false;
    }
    if (padding != std::string_view::npos &&
        line.find_first_not_of('=', padding) != std::string_view::npos) {
        return false;
    }
    armour.characters = characters;
    armour.padded = padding != std::string_view::npos;
    return true;
}

// LastWord is what follows the last blank of a line: an encrypted text may begin on a line
// of prose ("here it is: HlsrjuX5+Mdf...").
std::string_view LastWord(std::string_view line) {
    const std::size_t blank = line.find_last_of(" \t");
    return blank == std::string_view::npos ? std::string_view() : line.substr(blank + 1);
}

std::size_t DecodedBytes(std::size_t characters) {
    const std::size_t rest = characters % 4;
    return characters / 4 * 3 + (rest == 2 ? 1 : rest == 3 ? 2 : 0);
}

// BestBlock picks, inside one run of armour lines, the longest part that drops at most
// kMaxStrayLines at each end, has "=" only on its last line and decodes to whole cipher
// blocks of at least kMinArmourBytes.
bool BestBlock(const std::vector<ArmourLine>& run, ArmourBlock& block) {
    std::size_t bestCharacters = 0;
    for (std::size_t first = 0; first <= kMaxStrayLines && first < run.size(); ++first) {
        for (std::size_t dropped = 0; dropped <= kMaxStrayLines && first + dropped < run.size();
             ++dropped) {
            const std::size_t last = run.size() - 1 - dropped;
            std::size_t characters = 0;
            bool paddedInside = false;
            for (std::size_t i = first; i <= last; ++i) {
                characters += run[i].characters.size();
                paddedInside = paddedInside || (run[i].padded && i != last);
            }
            const std::size_t bytes = DecodedBytes(characters);
            if (paddedInside || bytes < kMinArmourBytes || bytes % kCipherBlock != 0 ||
                characters <= bestCharacters) {
                continue;
            }
            bestCharacters = characters;
            block.base64.clear();
            for (std::size_t i = first; i <= last; ++i) {
                block.base64 += run[i].characters;
            }
            block.firstLine = run[first].number;
            block.lastLine = run[last].number;
        }
    }
    return bestCharacters > 0;
}

} // namespace

std::vector<ArmourBlock> FindArmourBlocks(std::string_view text) {
    std::vector<ArmourBlock> blocks;
    std::vector<ArmourLine> run;
    const auto closeRun = [&] {
        ArmourBlock block;
        if (!run.empty() && BestBlock(run, block)) {
            blocks.push_back(std::move(block));
        }
        run.clear();
    };
    std::size_t number = 0;
    for (std::size_t start = 0; start <= text.size();) {
        std::size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        ++number;
        ArmourLine line;
        line.number = number;
        const auto take = [&](std::string_view candidate) {
            if (!ReadArmourLine(candidate, line)) {
                return false;
            }
            // A padded line ends an encrypted text; whatever follows starts a new run.
            run.push_back(line);
            if (line.padded) {
                closeRun();
            }
            return true;
        };
        const std::string_view unquoted = Unquoted(text.substr(start, end - start));
        if (!take(unquoted)) {
            closeRun();
            take(LastWord(unquoted));
        }
        if (end == text.size()) {
            break;
        }
        start = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
    }
    closeRun();
    return blocks;
}

} // namespace kelvora
