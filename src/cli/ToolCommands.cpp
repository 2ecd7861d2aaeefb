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

constexpr std::array<OptionSpec, 0> kNoOptions{};
constexpr std::array kRateOptions = {kPassphraseFileOption};

int RejectOperands(CliContext& context, const ParsedArgs& args) {
    return Fail(context, kExitUsage, "unexpected argument '" + args.operands[0] + "'");
}

int Genpass(CliContext& context, const ParsedArgs& args) {
    if (!args.operands.empty()) {
        return RejectOperands(context, args);
    }
    SystemRandom random;
    SecretString passphrase(GenerateRandomPassphrase(random));
    context.out << passphrase.str() << '\n';
    return kExitSuccess;
}

int Rate(CliContext& context, const ParsedArgs& args) {
    if (!args.operands.empty()) {
        return RejectOperands(context, args);
    }
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

} // namespace

const Command GenpassCommand{
    "genpass", "print a random passphrase",
    "Usage: kelvora-cli genpass\n"
    "Prints one random passphrase of 32 characters, each drawn from the 94 characters from\n"
    "the blank to '}', from the system's secure random source (about 210 bits).\n",
    kNoOptions, Genpass};

const Command RateCommand{
    "rate", "rate the strength of a passphrase",
    "Usage: kelvora-cli rate [-p FILE]\n"
    "Rates a passphrase as the program's window does: a score from 0 to 100, up to five\n"
    "stars, and a sentence.\n\n"
    "  -p, --passphrase-file FILE  read the passphrase from FILE's first line\n\n"
    "The passphrase comes from the first of: -p FILE ('-' reads standard input), the\n"
    "environment variable KELVORA_PASSPHRASE, the terminal.\n",
    kRateOptions, Rate};

} // namespace kelvora::cli
