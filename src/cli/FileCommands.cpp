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

constexpr OptionSpec kContainerOption{
    kOutputName, 'o', "FILE",
    "the container to write (default: the first file's name with the extension .vexo); '-' "
    "streams it to standard output, records first and the index last"};
constexpr OptionSpec kEachFolderOption{"directory", 'C', "DIR",
                                       "with --each: where the containers go"};
constexpr OptionSpec kReplaceContainerOption{kForceName, '\0', {}, "replace an existing container"};
constexpr OptionSpec kFolderOption{"directory", 'C', "DIR", "restore below DIR"};
constexpr OptionSpec kSingleFileOption{
    kOutputName, 'o', "-",
    "write the container's single file to standard output (a container of several files is "
    "refused when the second one is reached)"};
constexpr OptionSpec kKeepGoingOption{
    "keep-going",
    'k',
    {},
    "salvage a damaged or cut-off container: restore every file whose chunks all check out, "
    "name each damaged file and its first damaged chunk, and go on; works without the index "
    "too (exit status 1 when anything was damaged)"};
constexpr OptionSpec kPartialOption{
    "partial",
    '\0',
    {},
    "with --keep-going, also keep the intact leading chunks of a damaged file, as NAME.partial"};
constexpr OptionSpec kOverwriteOption{"overwrite", '\0', {}, "replace files that exist already"};
constexpr OptionSpec kSkipExistingOption{
    "skip-existing",
    '\0',
    {},
    "leave files that exist already as they are (named on standard error)"};
constexpr OptionSpec kRenameOption{
    "rename", '\0', {}, "restore as \"name (2).ext\", the first number free"};
constexpr OptionSpec kListJsonOption{
    "json",
    '\0',
    {},
    "print {\"files\":[{\"name\":...,\"size\":...},...]} instead; a failure prints "
    "{\"ok\":false,\"error\":...} as well"};
constexpr OptionSpec kTestJsonOption{"json",
                                     '\0',
                                     {},
                                     "print {\"ok\":true,\"files\":[NAME,...]}, or on failure "
                                     "{\"ok\":false,\"error\":...,\"file\":N,\"chunk\":N}"};

constexpr std::array kEncryptOptions = {kContainerOption, kNameOption, kEachOption,
                                        kEachFolderOption, kReplaceContainerOption};
constexpr std::array kDecryptOptions = {kFolderOption,  kSingleFileOption, kKeepGoingOption,
                                        kPartialOption, kOverwriteOption,  kSkipExistingOption,
                                        kRenameOption};
constexpr std::array kListOptions = {kListJsonOption};
constexpr std::array kTestOptions = {kTestJsonOption};

constexpr OperandRule kOneContainer{1, 1, "name the container to read"};

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

int RunEncrypt(CliContext& context, const ParsedArgs& args) {
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
        if (args.Has(kOutputName)) {
            return Fail(context, kExitUsage, "--each names its containers itself: no -o");
        }
        return EncryptEach(context, args, list.Entries(), args.Value(kFolderOption.longName));
    }
    if (args.Has(kFolderOption.longName)) {
        return Fail(context, kExitUsage, "-C DIR goes with --each; name one container with -o");
    }
    const std::string output = args.Value(kOutputName).value_or(list.OutputName());
    if (output.empty()) {
        return Fail(context, kExitUsage, "name the container with -o FILE");
    }
    ObtainedSecret secret = ObtainKey(context, args, KeyPurpose::Encrypt);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    CliFileObserver observer(context, EncryptAnswers(context, args.Has(kForceName)));
    SystemRandom random;
    const EncryptRequest request{list.Entries(), output, &secret.key,
                                 &random,        {},     list.PassedOver()};
    OstreamSink standardOutput(context.out);
    const FileJobResult result = output == "-" ? EncryptFilesTo(request, standardOutput, observer)
                                               : EncryptFiles(request, observer);
    context.out.flush();
    return result.ok() ? kExitSuccess : JobFailed(context, observer, result);
}

// ContainerKey obtains the key to read a container with; a container and a passphrase
// cannot both come from standard input.
ObtainedSecret ContainerKey(CliContext& context, const ParsedArgs& args) {
    if (args.operands[0] == "-" && args.Value(kPassphraseFileOption.longName) == "-") {
        return ObtainedSecret::Refusal(
            kExitUsage, "the container and the passphrase cannot both come from standard input");
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

// FromStandardInput is true when the container comes from standard input ("-"): it is then
// read front to back without its index, as for salvage or a single file to standard output.
bool FromStandardInput(const ParsedArgs& args) {
    return args.operands.size() == 1 && args.operands[0] == "-";
}

WalkRequest WalkRequestFor(const ParsedArgs& args) {
    WalkRequest request;
    request.container = args.operands[0];
    request.folder = args.Value(kFolderOption.longName).value_or(".");
    request.toStandardOutput = args.Has(kOutputName);
    request.keepGoing = args.Has(kKeepGoingOption.longName);
    request.keepPartial = args.Has(kPartialOption.longName);
    request.json = args.Has(kListJsonOption.longName);
    request.existingFile = *ExistingFileAnswerOf(args);
    return request;
}

// DecryptOptionsProblem names a combination of decrypt options that cannot work.
std::string DecryptOptionsProblem(const ParsedArgs& args) {
    if (!ExistingFileAnswerOf(args)) {
        return "--overwrite, --skip-existing and --rename exclude each other";
    }
    if (args.Has(kOutputName) && args.Value(kOutputName) != "-") {
        return "-o takes only '-' (standard output); restore into a folder with -C DIR";
    }
    if (args.Has(kOutputName) &&
        (args.Has(kFolderOption.longName) || args.Has(kKeepGoingOption.longName))) {
        return "-o - writes one file to standard output: it goes with neither -C nor "
               "--keep-going";
    }
    if (args.Has(kPartialOption.longName) && !args.Has(kKeepGoingOption.longName)) {
        return "--partial goes with --keep-going";
    }
    if (args.Has(kOutputName) && args.operands.size() > 1) {
        return "unexpected argument '" + args.operands[1] + "'";
    }
    if (args.operands.size() > 1 &&
        std::find(args.operands.begin(), args.operands.end(), "-") != args.operands.end()) {
        return "standard input ('-') can only be decrypted alone";
    }
    return {};
}

int DecryptOne(CliContext& context, const ParsedArgs& args, const SecretBytes& key);

int RunDecrypt(CliContext& context, const ParsedArgs& args) {
    if (const std::string problem = DecryptOptionsProblem(args); !problem.empty()) {
        return Fail(context, kExitUsage, problem);
    }
    const ObtainedSecret secret = ContainerKey(context, args);
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
    if (FromStandardInput(args) || args.Has(kOutputName) || args.Has(kKeepGoingOption.longName)) {
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
            Fail(context, kExitFailure, ExistsAlready(conflict.name));
        }
    }
    return result.ok() ? kExitSuccess : JobFailed(context, observer, result);
}

int RunList(CliContext& context, const ParsedArgs& args) {
    const ObtainedSecret secret = ContainerKey(context, args);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    if (FromStandardInput(args)) {
        return WalkList(context, WalkRequestFor(args), secret.key);
    }
    FileJobAnswers answers;
    answers.quiet = context.quiet;
    CliFileObserver observer(context, answers);
    const auto listed = ListContainer(DecryptRequest{args.operands[0], {}, &secret.key}, observer);
    if (!listed) {
        return JobFailed(context, observer, listed.error(), args.Has(kListJsonOption.longName));
    }
    const std::vector<ContainerEntry>& entries = *listed;
    if (args.Has(kListJsonOption.longName)) {
        context.out << ListJson(entries);
        return kExitSuccess;
    }
    for (const ContainerEntry& entry : entries) {
        context.out << entry.plainBytes << '\t' << entry.name << '\n';
    }
    return kExitSuccess;
}

int RunTest(CliContext& context, const ParsedArgs& args) {
    const ObtainedSecret secret = ContainerKey(context, args);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    if (FromStandardInput(args)) {
        return WalkTest(context, WalkRequestFor(args), secret.key);
    }
    const bool json = args.Has(kListJsonOption.longName);
    std::vector<std::string> checked;
    FileJobAnswers answers;
    answers.quiet = context.quiet;
    answers.doneVerb = context.verbose ? "checked" : nullptr;
    answers.doneNames = &checked;
    CliFileObserver observer(context, answers);
    const FileJobResult result =
        TestContainer(DecryptRequest{args.operands[0], {}, &secret.key}, observer);
    if (!result.ok()) {
        return JobFailed(context, observer, result, json);
    }
    observer.ClearProgress();
    context.out << (json ? TestJson(checked) : "OK\n");
    return kExitSuccess;
}

constexpr std::array<std::string_view, 3> kEncryptUsages = {"-o OUT.vexo [--force] PATH...",
                                                            "--name NAME -o OUT.vexo [--force] -",
                                                            "--each [-C DIR] [--force] PATH..."};
constexpr std::array<std::string_view, 2> kDecryptUsages = {
    "CONTAINER... [-C DIR] [--overwrite | --skip-existing | --rename] [--keep-going "
    "[--partial]]",
    "-o - CONTAINER"};
constexpr std::array<std::string_view, 1> kListUsages = {"CONTAINER [--json]"};
constexpr std::array<std::string_view, 1> kTestUsages = {"CONTAINER [--json]"};

} // namespace

const Command kEncryptCommand{
    "encrypt",
    "encrypt files and folders into one .vexo container",
    kEncryptUsages,
    "Encrypts every PATH, in the order given, into one container: a folder goes in with "
    "everything below it (stored under the folder's own name), any other path as a single "
    "file. The container appears only once it is complete. PATH '-' (alone) stores standard "
    "input, read to its end, as one file named NAME.",
    kEncryptOptions,
    {1, kAnyNumber, "no files to encrypt (see 'kelvora-cli encrypt --help')"},
    PassphraseUse::Encrypt,
    RunEncrypt};

const Command kDecryptCommand{
    "decrypt",
    "restore the files of a .vexo container",
    kDecryptUsages,
    "Restores every file of each CONTAINER below DIR (default: the current folder), creating "
    "its folders, and prints one line per file restored. A wrong passphrase is found before "
    "anything is written; names that would leave DIR or pass through a symbolic link are "
    "refused. Every file that exists already (or that the container holds twice) is found "
    "before anything is written; without --overwrite, --skip-existing or --rename nothing is "
    "written. Several containers are restored one after another with the same passphrase; one "
    "that fails is reported and the others still go (exit status 1 then).\n"
    "CONTAINER '-' reads the container from standard input, record by record without its "
    "index, and checks the index at the end against what was read.",
    kDecryptOptions,
    {1, kAnyNumber, "name the container to read"},
    PassphraseUse::Decrypt,
    RunDecrypt};

const Command kListCommand{
    "list",
    "list the files of a .vexo container",
    kListUsages,
    "Prints one line per file, SIZE<TAB>NAME, the size in bytes and the name with '/' between "
    "folders. Writes nothing. CONTAINER '-' reads standard input (everything is then "
    "decrypted, and the list printed once the index has been checked).",
    kListOptions,
    kOneContainer,
    PassphraseUse::Decrypt,
    RunList};

const Command kTestCommand{
    "test",
    "check that a .vexo container decrypts completely",
    kTestUsages,
    "Decrypts and decompresses everything, writes nothing, and prints OK, or says which file "
    "and chunk is damaged. CONTAINER '-' reads standard input and also checks the index at the "
    "end against the records read.",
    kTestOptions,
    kOneContainer,
    PassphraseUse::Decrypt,
    RunTest};

} // namespace kelvora::cli
