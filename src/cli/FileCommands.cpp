#include "cli/FileCommands.h"

#include "cli/EachEncrypt.h"
#include "cli/FileErrorText.h"
#include "cli/FileProgress.h"
#include "cli/JsonReport.h"
#include "cli/PassphraseSource.h"
#include "cli/StandardInputEncrypt.h"
#include "cli/StreamAdapters.h"
#include "cli/StreamCommands.h"
#include "common/Random.h"
#include "files/ContainerInspect.h"
#include "files/DecryptJob.h"
#include "files/EncryptJob.h"
#include "files/FileIo.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <ostream>
#include <system_error>
#include <utility>

namespace kelvora::cli {
namespace {

constexpr OptionSpec kFolderOption{"directory", 'C', true};
constexpr OptionSpec kOverwriteOption{"overwrite", '\0', false};
constexpr OptionSpec kSkipExistingOption{"skip-existing", '\0', false};
constexpr OptionSpec kRenameOption{"rename", '\0', false};
constexpr OptionSpec kJsonOption{"json", '\0', false};
constexpr OptionSpec kKeepGoingOption{"keep-going", 'k', false};
constexpr OptionSpec kPartialOption{"partial", '\0', false};

constexpr std::array kEncryptOptions = {kOutputOption, kForceOption,  kNameOption,
                                        kEachOption,   kFolderOption, kPassphraseFileOption,
                                        kKeyFileOption};
constexpr std::array kDecryptOptions = {
    kFolderOption,    kOutputOption,  kOverwriteOption,      kSkipExistingOption, kRenameOption,
    kKeepGoingOption, kPartialOption, kPassphraseFileOption, kKeyFileOption};
constexpr std::array kReadOptions = {kJsonOption, kPassphraseFileOption, kKeyFileOption};

int JobFailed(CliContext& context, CliFileObserver& observer, const FileJobResult& result) {
    observer.ClearProgress();
    return Fail(context, kExitFailure, FileErrorMessage(result));
}

// JsonFailed reports a failed job as JobFailed does and, for --json, also on standard output.
int JsonFailed(CliContext& context, CliFileObserver& observer, const FileJobResult& result,
               bool json) {
    if (json) {
        context.out << FailureJson(result);
    }
    return JobFailed(context, observer, result);
}

// ListedPath gives a folder operand as an absolute, normal path, so that its stored names
// start with the folder's own name even for "." or "../x".
std::string ListedPath(const std::string& operand) {
    std::error_code error;
    if (!std::filesystem::is_directory(operand, error)) {
        return operand;
    }
    std::string path = std::filesystem::absolute(operand, error).lexically_normal().string();
    if (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

int EncryptFilesRun(CliContext& context, const ParsedArgs& args) {
    if (args.operands.empty()) {
        return Fail(context, kExitUsage, "no files to encrypt (see 'kelvora-cli encrypt --help')");
    }
    if (std::find(args.operands.begin(), args.operands.end(), "-") != args.operands.end()) {
        return EncryptStandardInput(context, args);
    }
    if (args.Has(kNameOption.longName)) {
        return Fail(context, kExitUsage, "--name names standard input ('-'), which is not given");
    }
    InputList list;
    for (const std::string& operand : args.operands) {
        if (!PathExists(operand)) {
            return Fail(context, kExitFailure,
                        "cannot read " + operand + ": no such file or folder");
        }
        if (list.AddListPath(ListedPath(operand))) {
            Note(context, "files listed twice are encrypted once");
        }
    }
    if (list.Empty()) {
        for (const OmittedEntry& passed : list.PassedOver()) {
            Fail(context, kExitFailure, FileErrorMessage(Failure(passed.why, 0, 0, passed.name)));
        }
        return Fail(context, kExitFailure, "the folders hold no files to encrypt");
    }
    if (args.Has(kEachOption.longName)) {
        if (args.Has(kOutputOption.longName)) {
            return Fail(context, kExitUsage, "--each names its containers itself: no -o");
        }
        return EncryptEach(context, args, list.Entries(), args.Value(kFolderOption.longName));
    }
    if (args.Has(kFolderOption.longName)) {
        return Fail(context, kExitUsage, "-C DIR goes with --each; name one container with -o");
    }
    const std::string output = args.Value(kOutputOption.longName).value_or(list.OutputName());
    if (output.empty()) {
        return Fail(context, kExitUsage, "name the container with -o FILE");
    }
    ObtainedSecret secret = ObtainKey(context, args, KeyPurpose::Encrypt);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    CliFileObserver observer(context, EncryptAnswers(context, args.Has(kForceOption.longName)));
    SystemRandom random;
    const EncryptRequest request{list.Entries(), output, &secret.key,
                                 &random,        {},     list.PassedOver()};
    OstreamSink standardOutput(context.out);
    const FileJobResult result = output == "-" ? EncryptFilesTo(request, standardOutput, observer)
                                               : EncryptFiles(request, observer);
    context.out.flush();
    return result.ok() ? kExitSuccess : JobFailed(context, observer, result);
}

// StartReading checks that a reading command got one container (or several, where the
// command takes several) and obtains its key, or says why not in the result's status and
// error.
ObtainedSecret StartReading(CliContext& context, const ParsedArgs& args, bool several = false) {
    if (args.operands.empty() || (args.operands.size() > 1 && !several)) {
        ObtainedSecret refused;
        refused.status = kExitUsage;
        refused.error = args.operands.empty() ? "name the container to read"
                                              : "unexpected argument '" + args.operands[1] + "'";
        return refused;
    }
    if (several && args.operands.size() > 1 &&
        std::find(args.operands.begin(), args.operands.end(), "-") != args.operands.end()) {
        ObtainedSecret refused;
        refused.status = kExitUsage;
        refused.error = "standard input ('-') can only be decrypted alone";
        return refused;
    }
    if (args.operands[0] == "-" && args.Value(kPassphraseFileOption.longName) == "-") {
        ObtainedSecret refused;
        refused.status = kExitUsage;
        refused.error = "the container and the passphrase cannot both come from standard input";
        return refused;
    }
    return ObtainKey(context, args, KeyPurpose::Decrypt);
}

// ExistingFileAnswerOf gives the answer the options choose for files that exist already, or
// nothing when more than one was given.
std::optional<ExistingFileAnswer> ExistingFileAnswerOf(const ParsedArgs& args) {
    constexpr std::array<std::pair<const OptionSpec*, ExistingFileAnswer>, 3> kAnswers = {{
        {&kOverwriteOption, ExistingFileAnswer::Overwrite},
        {&kSkipExistingOption, ExistingFileAnswer::Skip},
        {&kRenameOption, ExistingFileAnswer::Rename},
    }};
    std::optional<ExistingFileAnswer> answer = ExistingFileAnswer::Cancel;
    int given = 0;
    for (const auto& [option, meaning] : kAnswers) {
        if (args.Has(option->longName)) {
            answer = meaning;
            ++given;
        }
    }
    return given > 1 ? std::nullopt : answer;
}

// Walked reads a container front to back without its index: from a pipe, for salvage or
// to write its single file to standard output.
bool Walked(const ParsedArgs& args) {
    return args.operands.size() == 1 && args.operands[0] == "-";
}

WalkRequest WalkRequestFor(const ParsedArgs& args) {
    WalkRequest request;
    request.container = args.operands[0];
    request.folder = args.Value(kFolderOption.longName).value_or(".");
    request.toStandardOutput = args.Has(kOutputOption.longName);
    request.keepGoing = args.Has(kKeepGoingOption.longName);
    request.keepPartial = args.Has(kPartialOption.longName);
    request.json = args.Has(kJsonOption.longName);
    request.existingFile = *ExistingFileAnswerOf(args);
    return request;
}

// DecryptOptionsProblem names a combination of decrypt options that cannot work.
std::string DecryptOptionsProblem(const ParsedArgs& args) {
    if (!ExistingFileAnswerOf(args)) {
        return "--overwrite, --skip-existing and --rename exclude each other";
    }
    if (args.Has(kOutputOption.longName) && args.Value(kOutputOption.longName) != "-") {
        return "-o takes only '-' (standard output); restore into a folder with -C DIR";
    }
    if (args.Has(kOutputOption.longName) &&
        (args.Has(kFolderOption.longName) || args.Has(kKeepGoingOption.longName))) {
        return "-o - writes one file to standard output: it goes with neither -C nor "
               "--keep-going";
    }
    if (args.Has(kPartialOption.longName) && !args.Has(kKeepGoingOption.longName)) {
        return "--partial goes with --keep-going";
    }
    return {};
}

int DecryptOne(CliContext& context, const ParsedArgs& args, const SecretBytes& key);

int DecryptFilesRun(CliContext& context, const ParsedArgs& args) {
    if (const std::string problem = DecryptOptionsProblem(args); !problem.empty()) {
        return Fail(context, kExitUsage, problem);
    }
    const ObtainedSecret secret = StartReading(context, args, !args.Has(kOutputOption.longName));
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    // Several containers are restored one after another with the same key; one that fails
    // is reported and the others still go.
    int status = kExitSuccess;
    for (const std::string& container : args.operands) {
        ParsedArgs one = args;
        one.operands = {container};
        if (DecryptOne(context, one, secret.key) != kExitSuccess) {
            status = kExitFailure;
        }
    }
    return status;
}

int DecryptOne(CliContext& context, const ParsedArgs& args, const SecretBytes& key) {
    if (Walked(args) || args.Has(kOutputOption.longName) || args.Has(kKeepGoingOption.longName)) {
        return WalkDecrypt(context, WalkRequestFor(args), key);
    }
    FileJobAnswers answers;
    answers.quiet = context.quiet;
    answers.listRestored = true;
    answers.existingFile = *ExistingFileAnswerOf(args);
    CliFileObserver observer(context, answers);
    const DecryptRequest request{args.operands[0], args.Value(kFolderOption.longName).value_or("."),
                                 &key};
    const FileJobResult result = DecryptContainer(request, observer);
    if (result.error == FileError::OutputExists) {
        observer.ClearProgress();
        for (const OmittedEntry& conflict : result.omitted) {
            Fail(context, kExitFailure, conflict.name + " exists already");
        }
    }
    return result.ok() ? kExitSuccess : JobFailed(context, observer, result);
}

int ListRun(CliContext& context, const ParsedArgs& args) {
    const ObtainedSecret secret = StartReading(context, args);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    if (Walked(args)) {
        return WalkList(context, WalkRequestFor(args), secret.key);
    }
    FileJobAnswers answers;
    answers.quiet = context.quiet;
    CliFileObserver observer(context, answers);
    const auto listed = ListContainer(DecryptRequest{args.operands[0], {}, &secret.key}, observer);
    if (!listed) {
        return JsonFailed(context, observer, listed.error(), args.Has(kJsonOption.longName));
    }
    const std::vector<ContainerEntry>& entries = *listed;
    if (args.Has(kJsonOption.longName)) {
        context.out << ListJson(entries);
        return kExitSuccess;
    }
    for (const ContainerEntry& entry : entries) {
        context.out << entry.plainBytes << '\t' << entry.name << '\n';
    }
    return kExitSuccess;
}

int TestRun(CliContext& context, const ParsedArgs& args) {
    const ObtainedSecret secret = StartReading(context, args);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    if (Walked(args)) {
        return WalkTest(context, WalkRequestFor(args), secret.key);
    }
    const bool json = args.Has(kJsonOption.longName);
    std::vector<std::string> checked;
    FileJobAnswers answers;
    answers.quiet = context.quiet;
    answers.doneVerb = context.verbose ? "checked" : nullptr;
    answers.doneNames = &checked;
    CliFileObserver observer(context, answers);
    const FileJobResult result =
        TestContainer(DecryptRequest{args.operands[0], {}, &secret.key}, observer);
    if (!result.ok()) {
        return JsonFailed(context, observer, result, json);
    }
    observer.ClearProgress();
    context.out << (json ? TestJson(checked) : "OK\n");
    return kExitSuccess;
}

} // namespace

const Command EncryptFilesCommand{
    "encrypt", "encrypt files and folders into one .vexo container",
    "Usage: kelvora-cli encrypt -o OUT.vexo [--force] [-p FILE | --key-file FILE...]\n"
    "                           PATH...\n"
    "       kelvora-cli encrypt --name NAME -o OUT.vexo [--force] -\n"
    "       kelvora-cli encrypt --each [-C DIR] [--force] PATH...\n"
    "Encrypts every PATH, in the order given, into one container: a folder goes in with\n"
    "everything below it (stored under the folder's own name), any other path as a single\n"
    "file. The container appears only once it is complete. PATH '-' (alone) stores\n"
    "standard input, read to its end, as one file named NAME.\n\n"
    "  -o, --output FILE           the container to write (default: the first file's name\n"
    "                              with the extension .vexo); '-' streams it to standard\n"
    "                              output, records first and the index last\n"
    "      --name NAME             the stored name of standard input ('a/b' makes folders)\n"
    "      --each                  one container per input file instead, holding that file\n"
    "                              alone: NAME.vexo beside it, or below -C DIR (the folder\n"
    "                              structure of the inputs kept); a file that fails is\n"
    "                              reported and the others still go; .vexo files are\n"
    "                              passed over (with a note)\n"
    "  -C, --directory DIR         with --each: where the containers go\n"
    "      --force                 replace an existing container\n"
    "  -p, --passphrase-file FILE  read the passphrase from FILE's first line\n"
    "      --key-file FILE         a shared-security key, given once per key, key 1 first\n"
    "                              (2 to 10 files; the container then opens only in\n"
    "                              shared-security mode, with all keys in the same order)\n\n"
    "The passphrase comes from the first of: -p FILE, the environment variable\n"
    "KELVORA_PASSPHRASE, the terminal (asked twice); -p and --key-file exclude each other.\n",
    kEncryptOptions, EncryptFilesRun};

const Command DecryptFilesCommand{
    "decrypt", "restore the files of a .vexo container",
    "Usage: kelvora-cli decrypt CONTAINER... [-C DIR] [--overwrite | --skip-existing | --rename]\n"
    "                           [--keep-going [--partial]] [-p FILE] [--key-file FILE]...\n"
    "       kelvora-cli decrypt -o - CONTAINER\n"
    "Restores every file of each CONTAINER below DIR (default: the current folder),\n"
    "creating its folders, and prints one line per file restored. A wrong passphrase is\n"
    "found before anything is written; names that would leave DIR or pass through a\n"
    "symbolic link are refused. Every file that exists already (or that the container holds\n"
    "twice) is found before anything is written; without --overwrite, --skip-existing or\n"
    "--rename nothing is written. Several\n"
    "containers are restored one after another with the same passphrase; one that fails is\n"
    "reported and the others still go (exit status 1 then).\n"
    "CONTAINER '-' reads the container from standard input, record by record without its\n"
    "index, and checks the index at the end against what was read.\n\n"
    "  -C, --directory DIR         restore below DIR\n"
    "  -o, --output -              write the container's single file to standard output\n"
    "                              (a container of several files is refused when the\n"
    "                              second one is reached)\n"
    "  -k, --keep-going            salvage a damaged or cut-off container: restore every\n"
    "                              file whose chunks all check out, name each damaged file\n"
    "                              and its first damaged chunk, and go on; works without\n"
    "                              the index too (exit status 1 when anything was damaged)\n"
    "      --partial               with --keep-going, also keep the intact leading chunks of\n"
    "                              a damaged file, as NAME.partial\n"
    "      --overwrite             replace files that exist already\n"
    "      --skip-existing         leave files that exist already as they are (named on\n"
    "                              standard error)\n"
    "      --rename                restore as \"name (2).ext\", the first number free\n"
    "  -p, --passphrase-file FILE  read the passphrase from FILE's first line\n"
    "      --key-file FILE         a shared-security key, given once per key, key 1 first\n\n"
    "The passphrase comes from the first of: -p FILE, --key-file FILE..., the environment\n"
    "variable KELVORA_PASSPHRASE, the terminal.\n",
    kDecryptOptions, DecryptFilesRun};

const Command ListCommand{
    "list", "list the files of a .vexo container",
    "Usage: kelvora-cli list CONTAINER [--json] [-p FILE] [--key-file FILE]...\n"
    "Prints one line per file, SIZE<TAB>NAME, the size in bytes and the\n"
    "name with '/' between folders. Writes nothing. CONTAINER '-' reads standard input\n"
    "(everything is then decrypted, and the list printed once the index has been checked).\n\n"
    "      --json                  print {\"files\":[{\"name\":...,\"size\":...},...]} instead;\n"
    "                              a failure prints {\"ok\":false,\"error\":...} as well\n"
    "  -p, --passphrase-file FILE  read the passphrase from FILE's first line\n"
    "      --key-file FILE         a shared-security key, given once per key, key 1 first\n\n"
    "The passphrase comes from the first of: -p FILE, --key-file FILE..., the environment\n"
    "variable KELVORA_PASSPHRASE, the terminal.\n",
    kReadOptions, ListRun};

const Command TestCommand{
    "test", "check that a .vexo container decrypts completely",
    "Usage: kelvora-cli test CONTAINER [--json] [-p FILE] [--key-file FILE]...\n"
    "Decrypts and decompresses everything, writes nothing, and prints OK,\n"
    "or says which file and chunk is damaged. CONTAINER '-' reads standard input and\n"
    "also checks the index at the end against the records read.\n\n"
    "      --json                  print {\"ok\":true,\"files\":[NAME,...]}, or on failure\n"
    "                              {\"ok\":false,\"error\":...,\"file\":N,\"chunk\":N}\n"
    "  -p, --passphrase-file FILE  read the passphrase from FILE's first line\n"
    "      --key-file FILE         a shared-security key, given once per key, key 1 first\n\n"
    "The passphrase comes from the first of: -p FILE, --key-file FILE..., the environment\n"
    "variable KELVORA_PASSPHRASE, the terminal.\n",
    kReadOptions, TestRun};

} // namespace kelvora::cli
