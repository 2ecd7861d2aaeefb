// The files page: the encrypt tab fills its list and writes containers, the decrypt tab
// restores them; both ask in a fixed order and stop cleanly.
#include "app/DecryptPage.h"
#include "app/EncryptPage.h"
#include "app/FileTree.h"
#include "app/InputListBox.h"
#include "app/WindowHarness.h"

#include <QFileInfo>
#include <QListWidget>
#include <QRadioButton>
#include <QTimer>
#include <QUrl>

namespace kelvora {

using namespace Qt::StringLiterals;
using namespace testing;
using Answer = MessageService::Answer;

namespace {

constexpr int kDialog = RecordingMessageService::kFileDialog;
const QString kPassphrase = u"container pass \u00fc"_s;

// Files drives the encrypt page of a window opened on it.
struct Files : Harness {
    Files() : Harness(kEnglish, "/filee") {}

    InputListBox* List() { return Find<InputListBox>("LstCryptFiles"); }
    QString Output() { return Find<QLineEdit>("TxtEncrFileName")->text(); }
    QStringList Relative() {
        QStringList relative;
        for (const InputEntry& entry : List()->List().Entries()) {
            relative << QString::fromStdString(entry.relativePath);
        }
        return relative;
    }
    void AddFolder(const QString& folder) {
        Click("OptDirs");
        messages.folderAnswers << folder;
        Click("CmdAdCryptdfile");
    }
    void AddFiles(const QStringList& files) {
        Click("OptFiles");
        messages.openAnswers << files;
        Click("CmdAdCryptdfile");
    }
};

// Container encrypts the tree's folder "in" with kelvora-cli into "in.vexo".
QString Container(const FileTree& tree) {
    const QString output = tree.Path(u"in.vexo"_s);
    const QString cli =
        RunCli({u"encrypt"_s, u"-q"_s, u"-o"_s, output, tree.Path(u"in"_s)}, {}, kPassphrase);
    if (cli.startsWith(u"failed"_s)) {
        qFatal("kelvora-cli encrypt %s", qPrintable(cli));
    }
    return output;
}

// Decrypting drives the decrypt page of a window opened on a container.
struct Decrypting : Harness {
    Decrypting(const QString& container, const QString& folder) : Harness(kEnglish, "/filed") {
        Find<DecryptPage>("FrameDecrypt")->SetContainer(container, folder);
        Fill({}, kPassphrase);
    }
};

} // namespace

class FilesPageTest : public QObject {
    Q_OBJECT

private slots:
    // A folder is stored under its own name and proposes its container beside it (a later file
    // changes nothing), a lone file is stored by itself; what is listed already is refused with
    // one message, however many were refused. Selected entries go by the button or the Delete
    // key, and are forgotten.
    void ListAddsAndRemovesEntries() {
        FileTree tree;
        tree.Write(u"pics.24/a.jpg"_s, "a");
        tree.Write(u"pics.24/sub/b.txt"_s, "bb");
        const QString notes = tree.Write(u"notes.txt"_s, "ccc");
        const QString other = tree.Write(u"other.txt"_s, "d");
        Files h;
        QVERIFY(h.Find<QRadioButton>("OptFiles")->isChecked());
        QVERIFY(!h.Find("CmdDelCryptFiles")->isEnabled()); // nothing to remove yet
        h.AddFolder(tree.Path(u"pics.24"_s));
        QCOMPARE(h.Relative(), (QStringList{u"/pics.24/a.jpg"_s, u"/pics.24/sub/b.txt"_s}));
        QCOMPARE(h.Output(), tree.Path(u"pics.24.vexo"_s)); // beside the folder, not inside
        h.AddFiles({notes, tree.Path(u"pics.24/a.jpg"_s), tree.Path(u"pics.24//sub/b.txt"_s)});
        QCOMPARE(h.Relative(), (QStringList{u"/pics.24/a.jpg"_s, u"/pics.24/sub/b.txt"_s, u"/"_s}));
        QCOMPARE(h.List()->count(), 3);
        QCOMPARE(h.List()->item(2)->text(), notes);
        QCOMPARE(h.messages.ShownIds(), (QList<int>{kDialog, kDialog, 393}));
        QCOMPARE(h.messages.shown[0].title, Catalogue(kEnglish, 526));
        QCOMPARE(h.messages.shown[1].title, Catalogue(kEnglish, 121));
        QCOMPARE(h.messages.shown[1].text, u"All files (*)"_s);
        QCOMPARE(h.Text("LblListInfo"), Catalogue(kEnglish, 519, u"6 bytes"_s, u"3"_s));
        h.AddFolder(tree.Path(u"pics.24"_s)); // all refused: still one message
        QCOMPARE(h.messages.ShownIds(), (QList<int>{kDialog, kDialog, 393, kDialog, 393}));
        QCOMPARE(h.Output(), tree.Path(u"pics.24.vexo"_s));

        h.List()->item(0)->setSelected(true);
        h.List()->item(2)->setSelected(true);
        h.Click("CmdDelCryptFiles");
        QCOMPARE(h.List()->count(), 1);
        QCOMPARE(h.Relative(), QStringList{u"/pics.24/sub/b.txt"_s});
        h.AddFiles({other});
        h.List()->item(0)->setSelected(true);
        QTest::keyClick(h.List(), Qt::Key_Delete);
        QCOMPARE(h.List()->count(), 1);
        QCOMPARE(h.List()->item(0)->text(), other);
        QCOMPARE(h.Text("LblListInfo"), Catalogue(kEnglish, 519, u"1 bytes"_s, u"1"_s));
        h.AddFiles({notes}); // forgotten, so not a duplicate
        QCOMPARE(h.List()->count(), 2);
        QCOMPARE(h.messages.ShownIds().count(393), 2);
    }

    // A file proposes its name with "vexo" as extension (the core's rule), a file without
    // extension proposes nothing and leaves it to the next.
    void FilesProposeTheOutputByTheirExtension() {
        FileTree tree;
        const QString readme = tree.Write(u"README"_s, "r");
        const QString notes = tree.Write(u"notes.txt"_s, "n");
        Files h;
        h.window.OpenPaths({readme});
        QCOMPARE(h.Output(), QString());
        h.window.OpenPaths({notes});
        QCOMPARE(h.Output(), tree.Path(u"notes.vexo"_s));
    }

    // The list holds in/data.bin or is empty; the output is "out.vexo" (new), "old.vexo" (there
    // already) or the input itself. Nothing is touched unless a container is written.
    void EncryptAsksInOrder() {
        for (const auto& [listed, output, passphrase, answers, ids, written] :
             {std::tuple{false, "out.vexo", "pw", QList<Answer>{}, QList<int>{114}, false},
              {true, "out.vexo", "", {Answer::Ok}, {190, 114}, false},
              {true, "out.vexo", "pw", {Answer::Cancel}, {190}, false},
              {true, "old.vexo", "pw", {Answer::No}, {178}, false},
              {true, "old.vexo", "pw", {Answer::Yes, Answer::Cancel}, {178, 190}, false},
              {true, "old.vexo", "pw", {Answer::Yes, Answer::Ok}, {178, 190, 116}, true},
              {true, "out.vexo", "pw", {Answer::Ok}, {190, 116}, true},
              {true, "in/data.bin", "pw", {}, {103}, false}}) {
            FileTree tree;
            tree.Write(u"old.vexo"_s, "old container");
            const QString input = tree.Write(u"in/data.bin"_s, "data");
            const QMap<QString, QByteArray> before = tree.Contents();
            const QString outputPath = tree.Path(QString::fromLatin1(output));
            Files h;
            if (listed) {
                h.window.OpenPaths({input});
            }
            h.Find<QLineEdit>("TxtEncrFileName")->setText(outputPath);
            h.Fill({}, QString::fromLatin1(passphrase));
            h.messages.answers = answers;
            h.Click("Command4");
            QCOMPARE(h.messages.ShownIds(), ids);
            for (const auto& shown : h.messages.shown) {
                if (shown.id == 178) {
                    QCOMPARE(shown.text, Catalogue(kEnglish, 178, outputPath));
                }
                if (shown.id == 103) {
                    QVERIFY(shown.text.contains(input));
                }
                if (shown.id == 190) {
                    QCOMPARE(shown.title, u"Kelvora"_s);
                }
            }
            QCOMPARE(QFileInfo(outputPath).size() > 20, written);
            if (!written) {
                QCOMPARE(tree.Contents(), before);
            }
            QCOMPARE(h.List()->count(), written || !listed ? 0 : 1); // emptied after success
            QCOMPARE(h.State(), u"idle: PictAmpel / Frame_0 FramePwd"_s);
        }
    }

    // A tree encrypted in the window comes back byte for byte with kelvora-cli and in the
    // window, which says how many files it restored where and links to that folder.
    void ContainersTravelBetweenWindowAndCli() {
        FileTree tree;
        tree.WriteNoise(u"in/docs/big.bin"_s, 5 * 1024 * 1024 + 3); // three chunks
        tree.Write(u"in/docs/empty.txt"_s, "");
        tree.Write(u"in/docs/sub folder/\u00e4 b.txt"_s, "umlaut name");
        const QString lone = tree.Write(u"lone.txt"_s, "by itself");
        QMap<QString, QByteArray> expected = tree.Contents(u"in"_s);
        expected.insert(u"lone.txt"_s, "by itself");
        Files h;
        h.window.OpenPaths({tree.Path(u"in/docs"_s), lone});
        h.Fill({}, kPassphrase);
        h.Click("Command4");
        QCOMPARE(h.messages.ShownIds(), (QList<int>{190, 116}));
        const QString output = tree.Path(u"in/docs.vexo"_s);
        const QString cli =
            RunCli({u"decrypt"_s, u"-q"_s, output, u"-C"_s, tree.Path(u"cli"_s)}, {}, kPassphrase);
        QVERIFY2(!cli.startsWith(u"failed"_s), qPrintable(cli));
        QCOMPARE(tree.Contents(u"cli"_s), expected);

        Decrypting d(output, tree.Path(u"window"_s));
        d.Click("Command5");
        QCOMPARE(d.messages.ShownIds(), QList<int>{}); // no success box
        QCOMPARE(tree.Contents(u"window"_s), expected);
        QVERIFY(!d.Find<QLabel>("LblDecrResult")->isHidden());
        const QString result = d.Find<QLabel>("LblDecrResult")->text();
        const QString folderUrl = QUrl::fromLocalFile(tree.Path(u"window"_s)).toString();
        QVERIFY2(result.startsWith(u"%1 file(s) restored in <a href="_s.arg(expected.size())),
                 qPrintable(result));
        emit d.Find<QLabel>("LblDecrResult")->linkActivated(folderUrl);
        QCOMPARE(d.messages.openedUrls, QStringList{folderUrl});
        QCOMPARE(d.Find<WorkingPanel>("FrameW")->FileBar().Max(), expected.size());
    }

    // Closing the window during a job cancels it quietly, leaving neither a container nor a
    // part of one, and the list as it was; the window goes once the job has ended.
    void ClosingDuringAJobCancelsIt() {
        FileTree tree;
        const QString input = tree.WriteNoise(u"noise.bin"_s, 32 * 1024 * 1024);
        Files h;
        h.window.OpenPaths({input});
        h.Fill({}, u"pw"_s);
        bool closed = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            if (h.window.IsWorking() && !closed) {
                closed = h.window.close();
            }
        });
        poll.start(20);
        h.Click("Command4");
        QVERIFY(closed);
        QVERIFY(!h.window.isVisible());
        QVERIFY(h.window.Working().CancelRequested());
        QCOMPARE(h.messages.ShownIds(), QList<int>{190}); // no success, no error
        QCOMPARE(tree.Contents().keys(), QStringList{u"noise.bin"_s});
        QCOMPARE(h.List()->count(), 1);
    }

    void BrowsingForTheContainerProposesItsFolder() {
        Harness h(kSpanish, "/filed");
        h.messages.openAnswers << QStringList{u"/data/a b/box.vexo"_s};
        h.messages.folderAnswers << u"/restore here"_s;
        h.Click("CmdBrowseDecrFile");
        QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), u"/data/a b/box.vexo"_s);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), u"/data/a b/"_s);
        h.Click("CmdBrowseOutPath");
        QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), u"/restore here"_s);
        QCOMPARE(h.messages.shown[0].title, Catalogue(kSpanish, 122));
        QCOMPARE(h.messages.shown[1].title, Catalogue(kSpanish, 527));
    }

    // The container "in.vexo" holds in/note.txt ("note"); out/in/note.txt ("mine") is there.
    // Afterwards out/in/note.txt holds existing, and the name chosen instead (saveAnswer) holds
    // elsewhere.
    void DecryptAsksInOrder() {
        for (const auto& [situation, answers, saveAnswer, ids, existing, elsewhere] :
             {std::tuple{"no passphrase", QList<Answer>{}, "", QList<int>{114}, "mine", ""},
              {"no container named", {}, "", {114}, "mine", ""},
              {"container of 3 bytes", {}, "", {108}, "mine", ""},
              {"wrong passphrase", {}, "", {194}, "mine", ""},
              {"replaced on Yes", {Answer::Yes}, "", {178}, "note", ""},
              {"elsewhere on No", {Answer::No}, "other.txt", {178, kDialog}, "mine", "note"},
              {"save cancelled", {Answer::No}, "", {178, kDialog}, "mine", ""}}) {
            const QString name = QString::fromLatin1(situation);
            FileTree tree;
            tree.Write(u"in/note.txt"_s, "note");
            const QString container = Container(tree);
            const QString existingPath = tree.Write(u"out/in/note.txt"_s, "mine");
            const QMap<QString, QString> named = {
                {u"no container named"_s, QString()},
                {u"container of 3 bytes"_s, tree.Write(u"short.vexo"_s, "abc")}};
            Decrypting h(named.value(name, container), tree.Path(u"out"_s));
            const QMap<QString, QString> typed = {{u"no passphrase"_s, QString()},
                                                  {u"wrong passphrase"_s, u"not the passphrase"_s}};
            h.Fill({}, typed.value(name, kPassphrase));
            h.messages.answers = answers;
            if (*saveAnswer != 0) {
                h.messages.saveAnswers << tree.Path(QString::fromLatin1(saveAnswer));
            }
            h.Click("Command5");
            QCOMPARE(h.messages.ShownIds(), ids);
            QCOMPARE(h.messages.shown[0].text, Catalogue(kEnglish, ids[0], existingPath));
            if (ids.contains(kDialog)) {
                QCOMPARE(h.messages.shown[1].title, Catalogue(kEnglish, 110));
                QCOMPARE(h.messages.shown[1].text, existingPath);
            }
            const QMap<QString, QByteArray> out = tree.Contents(u"out"_s);
            QCOMPARE(out.keys(), QStringList{u"in/note.txt"_s}); // nothing else written
            QCOMPARE(out.value(u"in/note.txt"_s), QByteArray(existing));
            QCOMPARE(tree.Contents().value(QString::fromLatin1(saveAnswer)), QByteArray(elsewhere));
            QCOMPARE(h.State(), u"idle: PictAmpel / Frame_0 FramePwd"_s);
        }
    }

    void CancelDuringADecryptionLeavesNoPartialFile() {
        FileTree tree;
        tree.WriteNoise(u"in/noise.bin"_s, 256 * 1024 * 1024); // long enough to cancel midway
        const QString container = Container(tree);
        Decrypting h(container, tree.Path(u"out"_s));
        h.ClickAndCancel("Command5");
        QVERIFY(h.window.Working().CancelRequested());
        QCOMPARE(h.messages.ShownIds(), QList<int>{});
        QCOMPARE(tree.Contents(u"out"_s), (QMap<QString, QByteArray>{}));
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FilesPageTest)
#include "FilesPageTest.moc"
