#include "CliRun.h"
#include "common/Random.h"
#include "common/Version.h"
#include "crypto/CRijndael.h"
#include "crypto/CipherPath.h"
#include "crypto/KeyRules.h"
#include "files/ContainerFormat.h"
#include "files/FileTestSupport.h"
#include "i18n/Catalogue.h"
#include "text/EncryptedText.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <numeric>
#include <ranges>
#include <regex>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kelvora {
namespace {

using namespace kelvora::testing;

// Row is one command line and all a person sees of it: the exit status, what the terminal
// asked, standard error (its lines without the "kelvora-cli: " prefix), standard output and
// the files written; every other file stays as it was. In line, text and file names, {name}
// stands for a fixture file and {s} for the fixture's folder.
struct Row {
    // As in a shell: commands joined by " | " each read what the one before printed, those
    // joined by " ; " run one after another; words NAME=VALUE before a command set its
    // environment.
    std::string line;
    int status; // of the last command that failed, else 0
    // err and out: what all commands together wrote there
    std::string err;
    std::optional<std::string> out = ""; // nothing: not looked at
    std::string input = "";              // a fixture file's {name}: that file's bytes
    std::optional<std::string> passphrase = kPassphrase; // KELVORA_PASSPHRASE, if set
    // The files written or replaced, "NAME=CONTENTS|NAME" (without "=": any contents).
    std::string made = "";
    std::optional<std::string> typed = {}; // answers typed at a terminal; nothing: no terminal
    std::string asked = "";                // the prompts the terminal showed
};

const std::string kAsk = "Passphrase: ";
const std::string kRepeat = "Repeat the passphrase: ";
const std::string kFirst32(32, 'x');

// Fixture writes the files the rows name: key files, a tree, containers under kPassphrase,
// texts under "secret" and mails quoting them, and a FIFO; made once, written for each row.
Env Fixture(const ScratchFolder& scratch) {
    const std::string quoted =
        std::regex_replace(std::string(kHiUnderSecret), std::regex("([^\n]*\n)"), "> $1");
    CRijndael cipher;
    SystemRandom random;
    const auto text = [&](const SecretBytes& key, const char* plain) {
        return BytesFromString(
            EncryptText(cipher, key.bytes(), WithBanner(kEnglish, plain), random).text);
    };
    // Two containers of more than one chunk, made once: one cut off in its second record,
    // one with a damaged second chunk.
    static const Bytes cut = [] {
        const Bytes big = PatternBytes(FirstChunkRoom(2) + 1000, 5);
        Bytes bytes = BuildContainer({{"aa", {'a'}}, {"bg", big}, {"cc", {'c'}}});
        bytes.resize(bytes.size() - 200);
        return bytes;
    }();
    static const Bytes damaged = [] {
        Bytes bytes = BuildContainer({{"ok.txt", {'k'}}, {"big.bin", PatternBytes(2100000, 9)}});
        bytes[bytes.size() - 200] ^= 1;
        return bytes;
    }();
    static const std::vector<std::pair<std::string, Bytes>> files = {
        {"cut.vexo", cut},
        {"damaged.vexo", damaged},
        {"a", BytesFromString("a\n")},
        {"alpha", BytesFromString("b" + kAlpha + "\n")},
        {"k1", BytesFromString("alpha49\n")},
        {"k2", BytesFromString("beta1471\n")},
        {"pass", BytesFromString("secret\r\nsecond line ignored\n")},
        {"p32", BytesFromString(kFirst32 + "\n")},
        {"t.txt", BytesFromString("x")},
        {"q.txt", text(MakePassphraseKey("???"), "made elsewhere")},
        {"shared.txt",
         text(BuildKey(std::vector<std::string>{"alpha49", "beta1471", "a"}).key, "shared")},
        {"tree/leer", {}},
        {"tree/sub/one", {'1'}},
        {"gone/kept", {'k'}},
        {"tree/\xC3\x84rger/caf\xC3\xA9.txt", {'c'}},
        {"c1.vexo", BuildContainer({{"a.txt", {'a'}}})},
        {"one.vexo", BuildContainer({{"one.txt", {'h', 'i', '\n'}}})},
        {"differs.vexo", BuildContainer({{"a", {'1'}}, {"b", {'2'}}}, {68, 68, 100})},
        {"odd.vexo",
         BuildContainer({{"say \"hi\".txt", {'h', 'i'}}, {"d\\e", {}}, {"caf\xe9", {'1'}}})},
        {"unsafe.vexo", BuildContainer({{"\x1b]0;x\x07", {'t'}},
                                        {"a\nb", {'n'}},
                                        {"..\\up", {'x'}},
                                        {"\\abs", {'y'}},
                                        {"fine", {'f'}}})},
        {"twice.vexo",
         BuildContainer({{"a.txt", {'1'}}, {"b.txt", {'2'}}, {"c.txt", {'3'}}, {"b.txt", {'4'}}})},
        {"out/c.txt", BytesFromString("o")},
        {"mail.txt",
         BytesFromString("Hi Bob,\n\nyou sent me this:\n\n" + quoted + "\nCheers\n-- \nAnna\n")},
        {"mail2.txt", BytesFromString("first:\n" + std::string(kHiUnderSecret) + "\nsecond:\n" +
                                      StringFromBytes(text(MakePassphraseKey("secret"), "two")))},
    };
    Env names = {{"{s}", scratch.Path()}, {"{fifo}", scratch / "fifo"}};
    for (const auto& [name, bytes] : files) {
        WriteFile(scratch / name, bytes);
        names["{" + name + "}"] = scratch / name;
    }
    EXPECT_EQ(::mkfifo((scratch / "fifo").c_str(), 0600), 0);
    EXPECT_EQ(::symlink("nowhere", (scratch / "gone/dangling").c_str()), 0);
    return names;
}

std::string Expanded(std::string text, const Env& names) {
    for (const auto& [name, path] : names) {
        for (std::size_t at; (at = text.find(name)) != std::string::npos;) {
            text.replace(at, name.size(), path);
        }
    }
    return text;
}

// Split cuts text at each separator.
std::vector<std::string> Split(const std::string& text, std::string_view separator) {
    std::vector<std::string> parts;
    for (const auto part : std::views::split(text, separator)) {
        parts.emplace_back(part.begin(), part.end());
    }
    return parts;
}

// Repeated is text, times over.
std::string Repeated(const std::string& text, std::size_t times) {
    return std::regex_replace(std::string(times, '.'), std::regex("\\."), text);
}

// RunRow runs the row's commands in the fixture and compares everything a person sees.
void RunRow(const Row& row) {
    SCOPED_TRACE(row.line);
    ScratchFolder scratch;
    const Env names = Fixture(scratch);
    Tree before = TreeBelow(scratch.Path());
    ScriptedPrompt prompt;
    prompt.answers = Words(row.typed.value_or(""));
    const std::string input =
        names.contains(row.input) ? TempFolder::Read(names.at(row.input)) : row.input;
    CliResult all{0, {}, {}}; // what the commands did together
    for (const std::string& pipeline : Split(Expanded(row.line, names), " ; ")) {
        std::string piped = input;
        for (const std::string& command : Split(pipeline, " | ")) {
            Env env = row.passphrase ? Passphrase(*row.passphrase) : Env{};
            std::vector<std::string> words = Words(command);
            for (std::size_t at; (at = words.at(0).find('=')) != std::string::npos;) {
                env[words[0].substr(0, at)] = words[0].substr(at + 1);
                words.erase(words.begin());
            }
            std::istringstream in(piped);
            const CliResult ran = RunInProcess(words, in, env, row.typed ? &prompt : nullptr);
            all.status = ran.status == 0 ? all.status : ran.status;
            piped = ran.out;
            all.err += ran.err;
        }
        all.out += piped;
    }
    const std::string said = std::regex_replace(row.err.empty() ? "" : row.err + "\n",
                                                std::regex("([^\n]*)\n"), "kelvora-cli: $1\n");
    EXPECT_EQ(all.status, row.status);
    EXPECT_EQ(all.err, Expanded(said, names));
    if (row.out) {
        EXPECT_EQ(all.out, Expanded(*row.out, names));
    }
    EXPECT_EQ(std::accumulate(prompt.asked.begin(), prompt.asked.end(), std::string()), row.asked);
    Tree after = TreeBelow(scratch.Path());
    for (const std::string& made : Split(row.made, "|")) {
        const std::string file = made.substr(0, made.find('='));
        ASSERT_TRUE(after.contains(file)) << file;
        before[file] = file.size() < made.size() ? made.substr(file.size() + 1) : after[file];
    }
    EXPECT_EQ(after, before);
}

const auto none = std::nullopt;
const std::string kBannerEn =
    "This text has been encrypted with Kelvora Portable (free!) - http://www.kelvora.net\n";
const std::string kBannerDe = "Dieser Text wurde mit Kelvora Portable (kostenlos) verschl\xC3\xBC"
                              "sselt - http://www.kelvora.net\n";
const std::string kBannerFr = "Ce texte a \xC3\xA9t\xC3\xA9 chiffr\xC3\xA9 avec Kelvora Portable "
                              "(gratuit) - http://www.kelvora.net\n";
const std::string kText = "Gr\xC3\xBC\xC3\x9F"
                          "e aus K\xC3\xB6ln\nzweite Zeile \xE2\x82\xAC\n";
const std::string kKeys = " --key-file {k1} --key-file {k2} --key-file {a}";
const std::string kUnholdable = "' (U+03B1) at character ";
const std::string kCannotHold = ", which an encrypted text cannot hold; give "
                                "--replace-unsupported to encrypt \"?\" in its place";
const std::string kUnsafe =
    ": refused, its stored name would leave the output folder or holds control characters\n";
const std::string kExists = "{t.txt} exists already (use --force to replace it)";
const std::string kLong = "warning: the passphrase is longer than 32 characters: only the "
                          "first 32 characters are used";
const std::string kFifo = "{fifo}: refused, not a regular file (a FIFO, socket or device)";

TEST(CommandLine, TextsPassphrasesAndKeys) {
    const std::string elevenKeys = "decrypt-text" + Repeated(" --key-file {a}", 11);
    const Row rows[] = {
        {"decrypt-text", 1, "wrong passphrase, or not a Kelvora text", "", kHiUnderSecret,
         "Secret"},
        {"decrypt-text --force", 0, "", none, kHiUnderSecret, "S"},
        {"decrypt-text", 1,
         "not a Kelvora text: it is damaged or incomplete (its length is not a whole number of "
         "blocks)",
         "", std::string(kHiUnderSecret, 100), "secret"},
        {"decrypt-text", 1, "the input holds no encrypted text", "", "\n"},
        {"encrypt-text", 1, "the text to encrypt is empty"},
        {"encrypt-text --lang de | decrypt-text", 0, "", kBannerDe + kText, kText},
        {"LANG=fr_FR.UTF-8 encrypt-text | decrypt-text", 0, "", kBannerFr + "x", "x"},
        {"LANG=fr_FR.UTF-8 encrypt-text --lang DE | decrypt-text", 0, "", kBannerDe + "x", "x"},
        {"encrypt-text --lang it", 2, "--lang takes de, en, es or fr", "", "x"},
        {"encrypt-text --replace-unsupported | decrypt-text --no-banner", 0,
         "warning: 5 characters of the text replaced by \"?\"", "a?b?c????",
         "a" + kEmoji + std::string("b\0c?", 4) + kGreek},
        {"encrypt-text", 1,
         "the text holds '" + kEmoji + "' (U+1F511) at line 2, column 8" + kCannotHold, "",
         "line\nsecond " + kEmoji + " x"},
        {"encrypt-text", 1, "the text holds U+0000 at line 1, column 3" + kCannotHold, "",
         std::string("ab\0cd", 5)},
        // Where the passphrase comes from: -p FILE's first line, then the environment, then
        // the terminal.
        {"decrypt-text -v -p {pass} -i {mail.txt}", 0, "decrypting the encrypted text of lines 5-7",
         kBannerEn + "Hi", "", "Secret"},
        {"decrypt-text --no-banner -p -", 0, "", "Hi", "secret\n" + std::string(kHiUnderSecret),
         none},
        {"encrypt-text -i {t.txt} -o {s}/first.asc -o {s}/x.asc | decrypt-text --no-banner -i "
         "{s}/x.asc",
         0, "", "x", "", kPassphrase, "x.asc"},
        {"encrypt-text | decrypt-text --no-banner", 0, "", "x", "x", none, "",
         "secret secret secret", kAsk + kRepeat + kAsk},
        {"encrypt-text", 2, "the two passphrases differ", "", "x", none, "", "secret Secret",
         kAsk + kRepeat},
        {"encrypt-text", 2, "the two passphrases differ", "", "x", none, "", "secret",
         kAsk + kRepeat},
        {"encrypt-text", 2, "no passphrase was entered", "", "x", none, "", "", kAsk},
        {"decrypt-text", 0, "", kBannerEn + "Hi", kHiUnderSecret, none, "", "secret", kAsk},
        {"rate", 0, "", "score: 20/100\nstars: **---\nThis passphrase can presumably be cracked.\n",
         "", none, "", "abcdefghij", kAsk},
        {"encrypt-text", 2, "the passphrase is empty", "", "x", ""},
        {"encrypt-text -p /nonexistent/pass", 2,
         "cannot read /nonexistent/pass: No such file or directory", "", "x", none},
        {"encrypt-text | decrypt-text --no-banner -p {p32}", 0, kLong, "long", "long",
         kFirst32 + "y"},
        // 32 characters of two bytes each are not longer than the key
        {"rate", 0, "", none, "", Repeated("\xC3\xA4", 32)},
        {"encrypt-text", 1,
         "the passphrase holds '" + kAlpha + kUnholdable +
             "1, which a key cannot hold (it becomes \"?\"); choose another",
         "", "x", kGreek},
        // A text made under "αβγ" elsewhere was made with the key "???": it keeps opening.
        {"decrypt-text --no-banner -i {q.txt}", 0,
         "warning: the passphrase holds '" + kAlpha + kUnholdable +
             "1, which a key cannot hold (it becomes \"?\")",
         "made elsewhere", "", kGreek},
        // Key files combine in their order under the shared-key rule, as the core combines
        // them; the digests of the first two keys hold bytes Windows-1252 leaves undefined.
        {"decrypt-text --no-banner -i {shared.txt}" + kKeys, 0, "", "shared", "", none},
        {"encrypt -o - {a}" + kKeys + " | test -" + kKeys, 0, "", "OK\n", "", none},
        {"encrypt-text -p /dev/null --key-file {a}", 2,
         "give either -p FILE or --key-file FILE..., not both", "", "x", none},
        {"encrypt-text --key-file {a}", 2,
         "one key is no shared security: give --key-file 2 to 10 times, or -p FILE", "", "x", none},
        {elevenKeys, 2, "at most 10 key files can be combined", "", "x", none},
        {"decrypt-text --key-file {a} --key-file /dev/null", 2, "key 2 is empty", "", "x", none},
        {"encrypt-text --key-file {a} --key-file {alpha}", 1,
         "key 2 holds '" + kAlpha + kUnholdable +
             "2, which a key cannot hold (it becomes \"?\"); choose another",
         "", "x", none},
        // Mails quoting encrypted texts.
        {"decrypt-text -i {mail2.txt}", 1,
         "the input holds 2 encrypted texts (1: lines 2-4, 2: lines 7-9); choose one with --block "
         "N",
         "", "", "secret"},
        {"decrypt-text --no-banner --block 2 -i {mail2.txt}", 0, "", "two", "", "secret"},
        {"decrypt-text --no-banner --block=1 -i {mail2.txt}", 0, "", "Hi", "", "secret"},
    };
    for (const Row& row : rows) {
        RunRow(row);
    }
    for (const char* block : {"0", "3", "x", "-1", "99999999"}) {
        RunRow({"decrypt-text -i {mail2.txt} --block " + std::string(block), 2,
                "--block takes a number from 1 to 2", "", "", "secret"});
    }
}

TEST(CommandLine, UsageAndOutputs) {
    const Row rows[] = {
        {"--version", 0, "",
         "kelvora-cli " + std::string(kVersionText) +
             "\ncipher path: " + std::string(CipherPathName(ActiveCipherPath())) + "\n"},
        {"decrypt-text --passphrase x", 2,
         "unknown option '--passphrase' (see 'kelvora-cli decrypt-text --help')", "", "", none},
        {"encrypt-text file.txt", 2, "unexpected argument 'file.txt'"},
        {"encrypt-all", 2, "unknown command 'encrypt-all' (see 'kelvora-cli --help')"},
        {"help nonsense", 2, "unknown command 'nonsense' (see 'kelvora-cli --help')"},
        {"help list test", 2, "help takes one command"},
        {"genpass -q -v", 2, "--quiet and --verbose exclude each other"},
        {"test - -p -", 2, "the container and the passphrase cannot both come from standard input"},
        {"decrypt c.vexo --partial", 2, "--partial goes with --keep-going"},
        {"decrypt c.vexo -o x", 2,
         "-o takes only '-' (standard output); restore into a folder with -C DIR"},
        {"encrypt -o x.vexo - a", 2, "standard input ('-') can only be encrypted alone"},
        {"encrypt -o x.vexo -", 2, "name the file read from standard input with --name NAME"},
        {"encrypt --name x a", 2, "--name names standard input ('-'), which is not given"},
        {"decrypt a.vexo -", 2, "standard input ('-') can only be decrypted alone"},
        {"decrypt", 2, "name the container to read"},
        {"encrypt -o x.vexo", 2, "no files to encrypt (see 'kelvora-cli encrypt --help')"},
        {"decrypt {c1.vexo} --overwrite --skip-existing", 2,
         "--overwrite, --skip-existing and --rename exclude each other"},
        // Outputs that exist already are replaced only with --force, and then whole.
        {"encrypt-text -o {t.txt}", 1, kExists, "", "x"},
        {"decrypt-text -o {t.txt}", 1, kExists, "", kHiUnderSecret, "secret"},
        {"encrypt -o {t.txt} {a}", 1, kExists},
        {"encrypt --name n -o {t.txt} -", 1, kExists, "", "x"},
        {"encrypt-text --force -o {t.txt} ; decrypt-text --no-banner -i {t.txt}", 0, "", "x", "x",
         kPassphrase, "t.txt"},
        {"decrypt-text --force -o {t.txt}", 0, "", "", kHiUnderSecret, "secret",
         "t.txt=" + kBannerEn + "Hi"},
        {"encrypt --force -o {t.txt} {a} ; list {t.txt}", 0, "", "2\ta\n", "", kPassphrase,
         "t.txt"},
        {"encrypt --force --name n -o {t.txt} - ; list {t.txt}", 0, "", "1\tn\n", "x", kPassphrase,
         "t.txt"},
        {"decrypt {twice.vexo} -C {s}/out", 1,
         "{s}/out/c.txt exists already\n{s}/out/b.txt exists already\n2 files exist already (use "
         "--overwrite, --skip-existing or --rename); nothing was written"},
        {"decrypt {twice.vexo} -C {s}/out --skip-existing", 0,
         "skipped {s}/out/c.txt: exists already\nskipped {s}/out/b.txt: exists already", none, "",
         kPassphrase, "out/a.txt=1|out/b.txt=2"},
        {"decrypt {twice.vexo} -C {s}/out --rename", 0, "", none, "", kPassphrase,
         "out/a.txt=1|out/b.txt=2|out/b (2).txt=4|out/c (2).txt=3"},
        {"decrypt {twice.vexo} -C {s}/out --overwrite", 0, "", none, "", kPassphrase,
         "out/a.txt=1|out/b.txt|out/c.txt=3"},
    };
    for (const Row& row : rows) {
        RunRow(row);
    }
}

TEST(CommandLine, ContainersFilesAndPipes) {
    const Row rows[] = {
        {"decrypt {c1.vexo} --overwrite", 1, "wrong passphrase", "", "", "wrong"},
        {"test --verbose {c1.vexo}", 0, "checked a.txt", "OK\n"},
        {"test -", 1,
         "the index at the end does not match the records read (2 files read, 3 in the index)", "",
         "{differs.vexo}"},
        {"encrypt -o {s}/n.vexo {a} {a} ; encrypt -q -o {s}/m.vexo {a} {a} ; list {s}/n.vexo ; "
         "list "
         "{s}/m.vexo",
         0, "files listed twice are encrypted once", "2\ta\n2\ta\n", "", kPassphrase,
         "n.vexo|m.vexo"},
        {"decrypt {c1.vexo} {t.txt} {one.vexo} -C {s}/out", 1,
         "{t.txt}: file has no usable content (not a Kelvora container, or damaged)",
         "{s}/out/a.txt\n{s}/out/one.txt\n", "", kPassphrase, "out/a.txt=a|out/one.txt=hi\n"},
        {"decrypt -o - {twice.vexo}", 1,
         "the container holds more than one file; only a single file can go to standard output "
         "(restore them with -C DIR)",
         none},
        {"list --json {odd.vexo}", 0, "",
         "{\"files\":[{\"name\":\"say "
         "\\\"hi\\\".txt\",\"size\":2},{\"name\":\"d/"
         "e\",\"size\":0},{\"name\":\"caf\u00e9\",\"size\":1}]}\n"},
        {"test --json {damaged.vexo}", 1, "file 2 (big.bin), chunk 2 is damaged",
         "{\"ok\":false,\"error\":\"file 2 (big.bin), chunk 2 is "
         "damaged\",\"file\":2,\"name\":\"big.bin\",\"chunk\":2}\n"},
        // Salvage belongs to the core; this is how the command line reports it.
        {"decrypt --keep-going --partial {cut.vexo} -C {s}/out", 1,
         "bg: chunk 2 is damaged, not restored; its intact leading chunks are in "
         "{s}/out/bg.partial\n905 bytes belong to no readable record and were passed over\nthe "
         "index at the end is missing or damaged: files may be missing "
         "after the last one read",
         "{s}/out/aa\n", "", kPassphrase, "out/aa=a|out/bg.partial"},
        {"test --json {odd.vexo}", 0, "",
         "{\"ok\":true,\"files\":[\"say \\\"hi\\\".txt\",\"d/e\",\"caf\u00e9\"]}\n"},
        // A folder's entries go in by name, byte for byte, so "\xC3\x84rger" comes last; a
        // container streamed through a pipe lists and restores as a file does.
        {"encrypt -o - {s}/tree | list - ; encrypt -o - {s}/tree | decrypt - -C {s}/out", 0, "",
         "0\ttree/leer\n1\ttree/sub/one\n1\ttree/\xC3\x84rger/caf\xC3\xA9.txt\n{s}/out/tree/"
         "leer\n{s}/out/tree/sub/one\n{s}/out/tree/\xC3\x84rger/caf\xC3\xA9.txt\n",
         "", kPassphrase,
         "out/tree/leer=|out/tree/sub/one=1|out/tree/\xC3\x84rger/caf\xC3\xA9.txt=c"},
        // Stored names are shown escaped and never created.
        {"list {unsafe.vexo} ; decrypt {unsafe.vexo} -C {s}/out", 1,
         "\\x1b]0;x\\x07" + kUnsafe + "a\\x0ab" + kUnsafe + "../up" + kUnsafe + "/abs" + kUnsafe +
             "4 entries were left out (named above)",
         "1\t\\x1b]0;x\\x07\n1\ta\\x0ab\n1\t../up\n1\t/abs\n1\tfine\n{s}/out/fine\n", "",
         kPassphrase, "out/fine=f"},
        // Special files never make a command wait: they are named and left out, or refused.
        {"encrypt -o {s}/n.vexo {fifo} {a} | list {s}/n.vexo", 1,
         kFifo + "\n1 entry was left out (named above)", "2\ta\n", "", kPassphrase, "n.vexo"},
        {"list {fifo}", 1, kFifo},
        // An entry of a tree that cannot be read is named with the system's reason.
        {"encrypt -o {s}/n.vexo {s}/gone ; list {s}/n.vexo", 1,
         "cannot read {s}/gone/dangling: No such file or directory\n1 entry was left out (named "
         "above)",
         "1\tgone/kept\n", "", kPassphrase, "n.vexo"},
        // A file that reads as empty but holds data is not stored empty.
        {"encrypt -o {s}/n.vexo /proc/self/status", 1,
         "/proc/self/status: refused, its size is not known in advance (it reads 0 bytes but holds "
         "data)\n1 entry was left out (named above)"},
    };
    for (const Row& row : rows) {
        RunRow(row);
    }
    // --each gives every file a container of its own, beside it or below -C DIR, and never
    // replaces one without --force.
    const std::string containers =
        "a.vexo|tree/leer.vexo|tree/sub/one.vexo|tree/\xC3\x84rger/caf\xC3\xA9.txt.vexo";
    for (const std::string place : {"", "e/"}) {
        // The containers below place, and a "list" of each after the command.
        const std::string made = std::regex_replace(containers, std::regex("[^|]+"), place + "$&");
        const std::string lists = std::regex_replace("|" + made, std::regex("\\|"), " ; list {s}/");
        RunRow({"encrypt --each {s}/tree {c1.vexo} {a}" +
                    std::string(place.empty() ? "" : " -C {s}/e") + lists,
                0, "passed over {c1.vexo}: it is a container already",
                "2\ta\n0\tleer\n1\tone\n1\tcaf\xC3\xA9.txt\n", "", kPassphrase, made});
    }
    RunRow({"encrypt --each {a} ; encrypt --each {a}", 1,
            "{s}/a.vexo exists already (use --force to replace it)", "", "", kPassphrase,
            "a.vexo"});
    // Standard input stored under --name reads back whole, at sizes around the first chunk's
    // room.
    const std::size_t room = FirstChunkRoom(2);
    for (const std::size_t size : {std::size_t{0}, room, room + 1, room + kChunkBytes}) {
        // Without "{", which the rows keep for the fixture's names.
        std::string data = StringFromBytes(PatternBytes(size, 3));
        std::replace(data.begin(), data.end(), '{', '(');
        RunRow({"encrypt --name f0 -o - - | list - ; encrypt --name f0 -o - - | decrypt -o - -", 0,
                "", std::to_string(size) + "\tf0\n" + data, data});
    }
}

// StoppingInput serves data and raises the stop flag once more than stopAt bytes have been
// read, as a Ctrl-C in the middle of a job would.
struct StoppingInput : std::stringbuf {
    StoppingInput(const std::string& data, std::streamoff at, std::atomic<int>& flag)
        : std::stringbuf(data, std::ios::in), stopAt(at), stop(flag) {}
    std::streamsize xsgetn(char* to, std::streamsize count) override {
        if (gptr() - eback() > stopAt) {
            stop = SIGINT;
        }
        return std::stringbuf::xsgetn(to, count);
    }
    std::streamoff stopAt;
    std::atomic<int>& stop;
};

// A stop requested midway through reading ends the job as cancelled and leaves nothing.
TEST(Stop, EndsAJobMidwayAndLeavesNoOutput) {
    ScratchFolder scratch;
    const Bytes big = PatternBytes(3 * kChunkBytes, 7, true);
    const Bytes container = BuildContainer({{"big.bin", big}, {"small", {'s'}}});
    const std::vector<std::pair<std::vector<std::string>, std::string>> jobs = {
        {{"encrypt", "--name", "big.bin", "-o", scratch / "c.vexo", "-"}, StringFromBytes(big)},
        {{"decrypt", "-", "-C", scratch / "out"}, StringFromBytes(container)},
    };
    for (const auto& [args, data] : jobs) {
        std::atomic<int> stop{0};
        StoppingInput buffer(data, kChunkBytes, stop);
        std::istream in(&buffer);
        const auto result = RunInProcess(args, in, Passphrase(kPassphrase), nullptr, &stop);
        EXPECT_EQ(stop, SIGINT) << args[0] << ": the job ended before the stop";
        EXPECT_EQ(result.status, 1) << args[0];
        EXPECT_EQ(result.err, "kelvora-cli: cancelled\n") << args[0];
        EXPECT_EQ(FilesBelow(scratch.Path()), std::vector<std::string>{}) << args[0];
    }
}

// RunProcess runs the built kelvora-cli as a process in a session of its own (so it has no
// terminal), with no input and the test's environment without KELVORA_PASSPHRASE.
// With signal set, it sends that signal after 300 milliseconds; a process still running 5
// seconds later is killed (status -1).
CliResult RunProcess(std::vector<std::string> words, int signal = 0) {
    words.insert(words.begin(), {"env", "-u", "KELVORA_PASSPHRASE", KELVORA_CLI_PATH});
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    const TempFolder outputs;
    const std::string out = (outputs.path() / "out").string();
    const std::string err = (outputs.path() / "err").string();
    const pid_t pid = fork();
    if (pid == 0) {
        setsid();
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(open(out.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
        dup2(open(err.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        execv("/usr/bin/env", argv.data());
        _exit(127);
    }
    int wstatus = 0;
    for (int waited = 0; waitpid(pid, &wstatus, WNOHANG) == 0; waited += 10) {
        if (waited == 300 || waited == 5300) {
            kill(pid, waited == 300 ? signal : SIGKILL); // signal 0 only asks if pid lives
        }
        usleep(10000);
    }
    const int status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
    return {status, TempFolder::Read(out), TempFolder::Read(err)};
}

// The real program: a stop signal ends a job at once, whether it works or waits on a FIFO
// nobody writes, with 128 + the signal and nothing left behind.
TEST(MainProcess, StopSignalEndsTheProgramWith128PlusTheSignal) {
    const std::pair<int, bool> cases[] = {
        {SIGINT, true}, {SIGTERM, false}, {SIGHUP, true}, {SIGQUIT, false}};
    for (const auto& [signal, waitsOnFifo] : cases) {
        SCOPED_TRACE(signal);
        ScratchFolder scratch;
        // A FIFO nobody writes, and a sparse file: gigabytes to work through, no disk taken.
        ASSERT_EQ(::mkfifo((scratch / "fifo").c_str(), 0600), 0);
        WriteFile(scratch / "big.bin", {});
        WriteFile(scratch / "pass", BytesFromString("secret"));
        std::filesystem::resize_file(scratch / "big.bin", 4LL << 30);
        using Args = std::vector<std::string>;
        Args args = waitsOnFifo
                        ? Args{"decrypt-text", "-i", scratch / "fifo", "-o", scratch / "out.txt"}
                        : Args{"encrypt", "-q", "-o", scratch / "c.vexo", scratch / "big.bin"};
        args.insert(args.end(), {"-p", scratch / "pass"});
        const std::vector<std::string> before = FilesBelow(scratch.Path());
        const CliResult result = RunProcess(args, signal);
        EXPECT_EQ(result.status, 128 + signal)
            << "still running 5 seconds after the signal? " << result.err;
        EXPECT_EQ(FilesBelow(scratch.Path()), before);
    }
}

TEST(MainProcess, WithoutATerminalNoPassphraseIsAUsageError) {
    const CliResult result = RunProcess({"decrypt-text", "-i", "/dev/null"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "kelvora-cli: no passphrase: give -p FILE, set KELVORA_PASSPHRASE, or "
                          "run on a terminal\n");
    EXPECT_EQ(RunProcess({"genpass"}).status, 0);
}

} // namespace
} // namespace kelvora
