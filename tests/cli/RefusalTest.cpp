#include "CliRun.h"
#include "common/TempFolder.h"
#include "files/FileTestSupport.h"

#include <gtest/gtest.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

// Every refusal is one error line, its exit status, nothing on standard output and nothing
// written.
struct RefusalCase {
    const char* name;
    // {a}, {b}, {empty} and {alpha} name key files holding a, b, "" and "bα"; {c} a container
    // holding a.txt under kPassphrase, {txt} a file that is none.
    std::string line;
    std::string input;
    std::optional<std::string> passphrase;
    int status;
    std::string error; // names as in line
};

class Refusal : public ::testing::TestWithParam<RefusalCase> {};

TEST_P(Refusal, IsOneErrorLineAndNoOutput) {
    ScratchFolder scratch;
    const Env names = {{"{a}", scratch / "a"},         {"{b}", scratch / "b"},
                       {"{empty}", scratch / "empty"}, {"{alpha}", scratch / "alpha"},
                       {"{c}", scratch / "c.vexo"},    {"{txt}", scratch / "t.txt"}};
    const std::vector<std::pair<std::string, std::string>> files = {{"a", "a\n"},
                                                                    {"b", "b\n"},
                                                                    {"empty", "\n"},
                                                                    {"alpha", "b" + kAlpha + "\n"},
                                                                    {"t.txt", "x"}};
    for (const auto& [name, contents] : files) {
        WriteFile(scratch / name, BytesFromString(contents));
    }
    WriteFile(scratch / "c.vexo", BuildContainer({{"a.txt", {'a'}}}));
    const std::vector<std::string> before = FilesBelow(scratch.Path());
    const auto& row = GetParam();
    const auto result = RunInProcess(Words(row.line, names), row.input,
                                     row.passphrase ? Passphrase(*row.passphrase) : Env{});
    EXPECT_EQ(result.status, row.status);
    EXPECT_EQ(result.out, "");
    std::string error = row.error;
    for (const auto& [word, path] : names) {
        if (const auto at = error.find(word); at != std::string::npos) {
            error.replace(at, word.size(), path);
        }
    }
    EXPECT_EQ(result.err, "kelvora-cli: " + error + "\n");
    EXPECT_EQ(FilesBelow(scratch.Path()), before);
}

std::string Repeated(const std::string& words, int times) {
    std::string line;
    for (int i = 0; i < times; ++i) {
        line += words;
    }
    return line;
}

const std::string kNotAText =
    "not a Kelvora text: it is damaged or incomplete (its length is not a whole number of blocks)";
const std::string kUnholdable = "' (U+03B1) at character ";

INSTANTIATE_TEST_SUITE_P(
    Table, Refusal,
    ::testing::Values(
        RefusalCase{"WrongPassphrase", "decrypt-text", kHiUnderSecret, "Secret", 1,
                    "wrong passphrase, or not a Kelvora text"},
        RefusalCase{"Truncated", "decrypt-text", std::string(kHiUnderSecret, 100), "secret", 1,
                    kNotAText},
        RefusalCase{"NotBase64", "decrypt-text", "Hello, no secret.", "secret", 1, kNotAText},
        RefusalCase{"EmptyInput", "decrypt-text", "\n", "secret", 1,
                    "the input holds no encrypted text"},
        RefusalCase{"EmptyText", "encrypt-text", "", "secret", 1, "the text to encrypt is empty"},
        RefusalCase{"NoPassphraseSource", "decrypt-text", kHiUnderSecret, std::nullopt, 2,
                    "no passphrase: give -p FILE, set KELVORA_PASSPHRASE, or run on a terminal"},
        RefusalCase{"EmptyPassphrase", "encrypt-text", "x", "", 2, "the passphrase is empty"},
        RefusalCase{"MissingPassphraseFile", "encrypt-text -p /nonexistent/pass", "x", std::nullopt,
                    2, "cannot read /nonexistent/pass: No such file or directory"},
        RefusalCase{"UnknownLanguage", "encrypt-text --lang it", "x", "secret", 2,
                    "--lang takes de, en, es or fr"},
        RefusalCase{"UnknownOption", "decrypt-text --passphrase x", "", std::nullopt, 2,
                    "unknown option '--passphrase' (see 'kelvora-cli decrypt-text --help')"},
        RefusalCase{"StrayOperand", "encrypt-text file.txt", "", "secret", 2,
                    "unexpected argument 'file.txt'"},
        RefusalCase{"UnknownCommand", "encrypt-all", "", std::nullopt, 2,
                    "unknown command 'encrypt-all' (see 'kelvora-cli --help')"},
        RefusalCase{"HelpOnUnknownCommand", "help nonsense", "", std::nullopt, 2,
                    "unknown command 'nonsense' (see 'kelvora-cli --help')"},
        RefusalCase{"HelpOnTwoCommands", "help list test", "", std::nullopt, 2,
                    "help takes one command"},
        RefusalCase{"QuietAndVerbose", "genpass -q -v", "", std::nullopt, 2,
                    "--quiet and --verbose exclude each other"},
        RefusalCase{"PassphraseFileWithKeyFiles", "encrypt-text -p /dev/null --key-file {a}", "x",
                    std::nullopt, 2, "give either -p FILE or --key-file FILE..., not both"},
        RefusalCase{"OneKeyFile", "encrypt-text --key-file {a}", "x", std::nullopt, 2,
                    "one key is no shared security: give --key-file 2 to 10 times, or -p FILE"},
        RefusalCase{"ElevenKeyFiles", "decrypt-text" + Repeated(" --key-file {a}", 11), "x",
                    std::nullopt, 2, "at most 10 key files can be combined"},
        RefusalCase{"EmptyKey", "decrypt-text --key-file {a} --key-file {empty}", "x", std::nullopt,
                    2, "key 2 is empty"},
        RefusalCase{"KeyTheCodePageLacks", "encrypt-text --key-file {a} --key-file {alpha}", "x",
                    std::nullopt, 1,
                    "key 2 holds '" + kAlpha + kUnholdable +
                        "2, which a key cannot hold (it becomes \"?\"); choose another"},
        RefusalCase{"PassphraseTheCodePageLacks", "encrypt-text", "x", kGreek, 1,
                    "the passphrase holds '" + kAlpha + kUnholdable +
                        "1, which a key cannot hold (it becomes \"?\"); choose another"},
        RefusalCase{"TextTheCodePageLacks", "encrypt-text", "line\nsecond " + kEmoji + " x",
                    "secret", 1,
                    "the text holds '" + kEmoji +
                        "' (U+1F511) at line 2, column 8, which an encrypted text cannot hold; "
                        "give --replace-unsupported to encrypt \"?\" in its place"},
        RefusalCase{"TextWithNul", "encrypt-text", std::string("ab\0cd", 5), "secret", 1,
                    "the text holds U+0000 at line 1, column 3, which an encrypted text cannot "
                    "hold; give --replace-unsupported to encrypt \"?\" in its place"},
        RefusalCase{"ContainerAndPassphraseFromStandardInput", "test - -p -", "", "secret", 2,
                    "the container and the passphrase cannot both come from standard input"},
        RefusalCase{"PartialAlone", "decrypt c.vexo --partial", "", "secret", 2,
                    "--partial goes with --keep-going"},
        RefusalCase{"DecryptToAFile", "decrypt c.vexo -o x", "", "secret", 2,
                    "-o takes only '-' (standard output); restore into a folder with -C DIR"},
        RefusalCase{"StandardInputWithOthers", "encrypt -o x.vexo - a", "", "secret", 2,
                    "standard input ('-') can only be encrypted alone"},
        RefusalCase{"StandardInputUnnamed", "encrypt -o x.vexo -", "", "secret", 2,
                    "name the file read from standard input with --name NAME"},
        RefusalCase{"NameWithoutStandardInput", "encrypt --name x a", "", "secret", 2,
                    "--name names standard input ('-'), which is not given"},
        RefusalCase{"StandardInputAmongContainers", "decrypt a.vexo -", "", "secret", 2,
                    "standard input ('-') can only be decrypted alone"},
        RefusalCase{"ListTwoContainers", "list a.vexo b.vexo", "", "secret", 2,
                    "unexpected argument 'b.vexo'"},
        RefusalCase{"NoContainer", "decrypt", "", "secret", 2, "name the container to read"},
        RefusalCase{"NoFiles", "encrypt -o x.vexo", "", "secret", 2,
                    "no files to encrypt (see 'kelvora-cli encrypt --help')"},
        RefusalCase{"WrongPassphraseDecrypt", "decrypt {c} --overwrite", "", "wrong", 1,
                    "wrong passphrase"},
        RefusalCase{"WrongPassphraseList", "list {c}", "", "wrong", 1, "wrong passphrase"},
        RefusalCase{"NotAContainer", "test {txt}", "", "wrong", 1,
                    "{txt}: file has no usable content (not a Kelvora container, or damaged)"},
        RefusalCase{"TwoAnswersToExistingFiles", "decrypt {c} --overwrite --skip-existing", "",
                    kPassphrase, 2, "--overwrite, --skip-existing and --rename exclude each other"},
        RefusalCase{"ContainerAmongItsInputs", "encrypt --force -o {txt} {txt} {a}", "",
                    kPassphrase, 1,
                    "{txt}: refused, the container would be one of the inputs or lie in a folder "
                    "being encrypted"}),
    [](const auto& info) { return info.param.name; });

} // namespace
} // namespace kelvora
