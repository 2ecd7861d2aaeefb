#include "cli/CliArgs.h"

#include <algorithm>

namespace kelvora::cli {
namespace {

const OptionSpec* FindLong(std::span<const OptionSpec> specs, std::string_view name) {
    const auto it = std::find_if(specs.begin(), specs.end(),
                                 [&](const OptionSpec& option) { return option.longName == name; });
    return it == specs.end() ? nullptr : &*it;
}

const OptionSpec* FindShort(std::span<const OptionSpec> specs, char letter) {
    const auto it = std::find_if(specs.begin(), specs.end(), [&](const OptionSpec& option) {
        return option.shortName == letter;
    });
    return it == specs.end() ? nullptr : &*it;
}

// Parser walks the arguments once; each Take* consumes one argument (and its value).
class Parser {
public:
    Parser(std::span<const std::string> args, std::span<const OptionSpec> specs)
        : m_args(args), m_specs(specs) {}

    ArgParseResult Run() {
        bool optionsEnded = false;
        for (m_next = 0; m_next < m_args.size() && m_error.empty();) {
            const std::string& arg = m_args[m_next++];
            if (optionsEnded || arg == "-" || !arg.starts_with('-')) {
                m_result.operands.push_back(arg);
            } else if (arg == "--") {
                optionsEnded = true;
            } else if (arg.starts_with("--")) {
                TakeLong(arg.substr(2));
            } else {
                TakeShortGroup(arg.substr(1));
            }
        }
        if (!m_error.empty()) {
            return ArgParseResult{{}, m_error};
        }
        return ArgParseResult{std::move(m_result), {}};
    }

private:
    void TakeLong(std::string_view body) {
        const std::size_t equals = body.find('=');
        const std::string_view name = body.substr(0, equals);
        const OptionSpec* option = FindLong(m_specs, name);
        if (option == nullptr) {
            m_error = "unknown option '--" + std::string(name) + "'";
        } else if (!option->TakesValue() && equals != std::string_view::npos) {
            m_error = "option '--" + std::string(name) + "' takes no value";
        } else if (!option->TakesValue()) {
            Add(*option, {});
        } else if (equals != std::string_view::npos) {
            Add(*option, std::string(body.substr(equals + 1)));
        } else {
            TakeSeparateValue(*option);
        }
    }

    void TakeShortGroup(std::string_view letters) {
        for (std::size_t i = 0; i < letters.size() && m_error.empty(); ++i) {
            const OptionSpec* option = FindShort(m_specs, letters[i]);
            if (option == nullptr) {
                m_error = std::string("unknown option '-") + letters[i] + "'";
            } else if (!option->TakesValue()) {
                Add(*option, {});
            } else if (i + 1 < letters.size()) {
                Add(*option, std::string(letters.substr(i + 1)));
                return;
            } else {
                TakeSeparateValue(*option);
            }
        }
    }

    void TakeSeparateValue(const OptionSpec& option) {
        if (m_next >= m_args.size()) {
            m_error = "option '--" + std::string(option.longName) + "' needs a value";
            return;
        }
        Add(option, m_args[m_next++]);
    }

    void Add(const OptionSpec& option, std::string value) {
        m_result.options.emplace_back(std::string(option.longName), std::move(value));
    }

    std::span<const std::string> m_args;
    std::span<const OptionSpec> m_specs;
    std::size_t m_next = 0;
    ParsedArgs m_result;
    std::string m_error;
};

} // namespace

bool ParsedArgs::Has(std::string_view name) const {
    return std::any_of(options.begin(), options.end(),
                       [&](const auto& option) { return option.first == name; });
}

std::optional<std::string> ParsedArgs::Value(std::string_view name) const {
    for (auto it = options.rbegin(); it != options.rend(); ++it) {
        if (it->first == name) {
            return it->second;
        }
    }
    return std::nullopt;
}

std::vector<std::string> ParsedArgs::Values(std::string_view name) const {
    std::vector<std::string> values;
    for (const auto& [optionName, value] : options) {
        if (optionName == name) {
            values.push_back(value);
        }
    }
    return values;
}

ArgParseResult ParseArgs(std::span<const std::string> args, std::span<const OptionSpec> specs) {
    return Parser(args, specs).Run();
}

} // namespace kelvora::cli
