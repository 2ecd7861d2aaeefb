#include "cli/ToolCommands.h"

#include "cli/PassphraseSource.h"
#include "common/Ansi.h"
#include "common/Random.h"
#include "i18n/Catalogue.h"
#include "tools/PassphraseGenerator.h"
#include "tools/PassphraseRating.h"

#include <array>
#include <ostream>

namespace kelvora::cli {
namespace {

int RunGenpass(CliContext& context, const ParsedArgs&) {
    SystemRandom random;
    SecretString passphrase(GenerateRandomPassphrase(random));
    context.out << passphrase.str() << '\n';
    return kExitSuccess;
}

int RunRate(CliContext& context, const ParsedArgs& args) {
    const ObtainedSecret secret = ObtainPassphrase(context, args, KeyPurpose::Rate);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    const PassphraseRating rating = PwdBewert(secret.passphrase.str());
    context.out << "score: " << rating.score << "/100\n"
                << "stars: " << std::string(static_cast<std::size_t>(rating.stars), '*')
                << std::string(static_cast<std::size_t>(5 - rating.stars), '-') << '\n'
                << GetText(kEnglish, rating.sentenceId) << '\n';
    return kExitSuccess;
}

constexpr std::array<std::string_view, 1> kNoOperands = {""};

} // namespace

const Command kGenpassCommand{
    "genpass",
    "print a random passphrase",
    kNoOperands,
    "Prints one random passphrase of 32 characters, each drawn from the 94 characters from the "
    "blank to '}', from the system's secure random source (about 210 bits).",
    {},
    {},
    PassphraseUse::None,
    RunGenpass};

const Command kRateCommand{
    "rate",
    "rate the strength of a passphrase",
    kNoOperands,
    "Rates a passphrase as the program's window does: a score from 0 to 100, up to five stars, "
    "and a sentence.",
    {},
    {},
    PassphraseUse::Rate,
    RunRate};

} // namespace kelvora::cli
