#pragma once

// How kelvora-cli speaks. Standard output carries only the result a command was asked for
// (a text, a container, a listing, JSON), so that it can be piped. Everything said to a
// person goes to standard error, one line each, behind the prefix "kelvora-cli: ": notes
// (Note, silenced by --quiet), warnings (Warn, "warning: ", the command goes on) and
// errors (Fail). Names quoted from files and containers are made printable first. The exit
// status is 0 on success, 1 when the job failed, 2 for an unusable command line or
// passphrase source, and 128 + n after stop signal n.

#include "cli/CliContext.h"

#include <string_view>

namespace kelvora::cli {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailure = 1; // the job failed: wrong passphrase, damaged input, I/O
inline constexpr int kExitUsage = 2;   // the command line or the passphrase source is unusable

// Note writes "kelvora-cli: <message>" on err unless the command runs quietly.
void Note(CliContext& context, std::string_view message);

// Warn writes "kelvora-cli: warning: <message>" on err; the command goes on.
void Warn(CliContext& context, std::string_view message);

// Fail writes the error line "kelvora-cli: <message>" on err and returns status (a command
// that goes on past an error ignores it).
int Fail(CliContext& context, int status, std::string_view message);

} // namespace kelvora::cli
