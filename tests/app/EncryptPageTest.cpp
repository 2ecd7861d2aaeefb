#include "app/EncryptPage.h"

#include "app/FileTree.h"
#include "app/InputListBox.h"
#include "app/WindowHarness.h"

#include <QFileInfo>
#include <QListWidget>
#include <QRadioButton>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::Catalogue;
using testing::FileTree;
using testing::Harness;
using testing::RunCli;
using Answer = MessageService::Answer;

namespace {

constexpr int kDialog = testing::RecordingMessageService::kFileDialog;

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

} // namespace

class EncryptPageTest : public QObject {
    Q_OBJECT

private slots:
    // The fields' names for screen readers and the first focus are the main window's test.
    void StartsOnFilesWithNothingToRemove() {
        Files h;
        QCOMPARE(h.Find<QLabel>("LblInputFiles")->buddy(), h.Find("LstCryptFiles"));
        QVERIFY(h.Find<QRadioButton>("OptFiles")->isChecked());
        QVERIFY(!h.Find("CmdDelCryptFiles")->isEnabled()); // nothing to remove yet
    }

    // A folder is stored under its own name, a lone file by itself; what is listed already is
    // refused with one message, however many were refused.
    void AddsFoldersAndFilesWithTheirRelativePaths() {
        FileTree tree;
        tree.Write(u"photos/a.jpg"_s, "a");
        tree.Write(u"photos/sub/b.txt"_s, "bb");
        const QString notes = tree.Write(u"notes.txt"_s, "ccc");
        Files h;
        h.AddFolder(tree.Path(u"photos"_s));
        QCOMPARE(h.Relative(), (QStringList{u"/photos/a.jpg"_s, u"/photos/sub/b.txt"_s}));
        QCOMPARE(h.Output(), tree.Path(u"photos.vexo"_s)); // beside the folder, not inside
        h.AddFiles({notes, tree.Path(u"photos/a.jpg"_s), tree.Path(u"photos//sub/b.txt"_s)});
        QCOMPARE(h.Relative(), (QStringList{u"/photos/a.jpg"_s, u"/photos/sub/b.txt"_s, u"/"_s}));
        QCOMPARE(h.List()->count(), 3);
        QCOMPARE(h.List()->item(2)->text(), notes);
        QCOMPARE(h.messages.ShownIds(), (QList<int>{kDialog, kDialog, 393}));
        QCOMPARE(h.messages.shown[0].title, Catalogue(kEnglish, 526));
        QCOMPARE(h.messages.shown[1].title, Catalogue(kEnglish, 121));
        QCOMPARE(h.messages.shown[1].text, u"All files (*)"_s);
        QCOMPARE(h.Find<QLabel>("LblListInfo")->text(),
                 QString::fromStdString(GetText(kEnglish, 519, "6 bytes", "3")));
        h.AddFolder(tree.Path(u"photos"_s)); // all refused: still one message
        QCOMPARE(h.messages.ShownIds(), (QList<int>{kDialog, kDialog, 393, kDialog, 393}));
        QCOMPARE(h.Output(), tree.Path(u"photos.vexo"_s));
    }

    void DefaultOutputNameComesFromTheFirstAddition_data() {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("output");
        QTest::newRow("file with extension") << u"notes.txt"_s << u"notes.vexo"_s;
        QTest::newRow("file without extension") << u"README"_s << QString();
        QTest::newRow("dot only in a folder name") << u"v1.2/README"_s << QString();
        QTest::newRow("folder") << u"album"_s << u"album.vexo"_s;
        QTest::newRow("folder with a dot") << u"album.2024"_s << u"album.2024.vexo"_s;
    }

    void DefaultOutputNameComesFromTheFirstAddition() {
        QFETCH(QString, first);
        QFETCH(QString, output);
        FileTree tree;
        tree.Write(u"notes.txt"_s, "n");
        tree.Write(u"README"_s, "r");
        tree.Write(u"v1.2/README"_s, "r");
        tree.Write(u"album/x.png"_s, "x");
        tree.Write(u"album.2024/x.png"_s, "x");
        Files h;
        h.window.OpenPaths({tree.Path(first)});
        QCOMPARE(h.Output(), output.isEmpty() ? QString() : tree.Path(output));
        h.window.OpenPaths({tree.Path(u"notes.txt"_s)}); // a later file changes nothing
        QCOMPARE(h.Output(), output.isEmpty() ? tree.Path(u"notes.vexo"_s) : tree.Path(output));
    }

    void RemovesTheSelectedEntries() {
        FileTree tree;
        QStringList files;
        for (const char* name : {"a", "b", "c", "d"}) {
            files << tree.Write(QString::fromLatin1(name), name);
        }
        Files h;
        h.AddFiles(files);
        h.List()->item(1)->setSelected(true);
        h.List()->item(3)->setSelected(true);
        h.Click("CmdDelCryptFiles");
        QCOMPARE(h.List()->count(), 2);
        QCOMPARE(h.List()->List().Entries().size(), std::size_t{2});
        QCOMPARE(h.List()->item(1)->text(), files[2]);
        h.List()->item(0)->setSelected(true);
        QTest::keyClick(h.List(), Qt::Key_Delete);
        QCOMPARE(h.List()->count(), 1);
        QCOMPARE(h.List()->item(0)->text(), files[2]);
        QCOMPARE(h.Find<QLabel>("LblListInfo")->text(),
                 QString::fromStdString(GetText(kEnglish, 519, "1 bytes", "1")));
        h.AddFiles({files[0]}); // forgotten, so not a duplicate
        QCOMPARE(h.List()->count(), 2);
        QVERIFY(!h.messages.ShownIds().contains(393));
    }

    void EncryptAsksInOrder_data() {
        QTest::addColumn<bool>("listed");
        QTest::addColumn<bool>("outputExists");
        QTest::addColumn<QString>("passphrase");
        QTest::addColumn<QList<Answer>>("answers");
        QTest::addColumn<QList<int>>("ids");
        QTest::addColumn<bool>("written");
        const auto row = [](const char* name, bool listed, bool exists, const char* passphrase,
                            QList<Answer> answers, QList<int> ids, bool written) {
            QTest::newRow(name) << listed << exists << QString::fromLatin1(passphrase) << answers
                                << ids << written;
        };
        row("empty list", false, false, "pw", {}, {114}, false);
        row("no passphrase", true, false, "", {Answer::Ok}, {190, 114}, false);
        row("reminder cancelled", true, false, "pw", {Answer::Cancel}, {190}, false);
        row("existing output kept on No", true, true, "pw", {Answer::No}, {178}, false);
        row("existing output, reminder cancelled", true, true, "pw", {Answer::Yes, Answer::Cancel},
            {178, 190}, false);
        row("existing output replaced", true, true, "pw", {Answer::Yes, Answer::Ok},
            {178, 190, 116}, true);
        row("new output", true, false, "pw", {Answer::Ok}, {190, 116}, true);
    }

    void EncryptAsksInOrder() {
        QFETCH(bool, listed);
        QFETCH(bool, outputExists);
        QFETCH(QString, passphrase);
        QFETCH(QList<Answer>, answers);
        QFETCH(QList<int>, ids);
        QFETCH(bool, written);
        FileTree tree;
        const QString output = tree.Path(u"out.vexo"_s);
        if (outputExists) {
            tree.Write(u"out.vexo"_s, "old container");
        }
        Files h;
        if (listed) {
            h.window.OpenPaths({tree.Write(u"in/data.bin"_s, "data")});
        }
        h.Find<QLineEdit>("TxtEncrFileName")->setText(output);
        h.Fill({}, passphrase);
        h.messages.answers = answers;
        h.Click("Command4");
        QCOMPARE(h.messages.ShownIds(), ids);
        for (const auto& shown : h.messages.shown) {
            if (shown.id == 178) {
                QCOMPARE(shown.text,
                         QString::fromStdString(GetText(kEnglish, 178, output.toStdString())));
            }
            if (shown.id == 190) {
                QCOMPARE(shown.title, u"Kelvora"_s);
            }
        }
        QCOMPARE(QFileInfo(output).size() > 20, written);
        if (outputExists && !written) {
            QCOMPARE(tree.Contents().value(u"out.vexo"_s), QByteArray("old container"));
        }
        QCOMPARE(h.List()->count(), written || !listed ? 0 : 1); // emptied after success
        QCOMPARE(h.State(), u"idle: PictAmpel / Frame_0 FramePwd"_s);
    }

    void OutputThatIsAnInputIsRefused() {
        FileTree tree;
        const QString input = tree.Write(u"a.txt"_s, "a");
        Files h;
        h.window.OpenPaths({input});
        h.Find<QLineEdit>("TxtEncrFileName")->setText(input);
        h.Fill({}, u"pw"_s);
        h.Click("Command4");
        QCOMPARE(h.messages.ShownIds(), QList<int>{103});
        QVERIFY(h.messages.shown[0].text.contains(input));
        QCOMPARE(tree.Contents().value(u"a.txt"_s), QByteArray("a"));
    }

    // A tree encrypted in the window comes back byte for byte with kelvora-cli.
    void WindowContainerDecryptsWithTheCli() {
        FileTree tree;
        tree.WriteNoise(u"in/docs/big.bin"_s, 5 * 1024 * 1024 + 3); // three chunks
        tree.Write(u"in/docs/empty.txt"_s, "");
        tree.Write(u"in/docs/sub folder/\u00e4 b.txt"_s, "umlaut name");
        const QString lone = tree.Write(u"lone.txt"_s, "by itself");
        Files h;
        h.window.OpenPaths({tree.Path(u"in/docs"_s), lone});
        h.Fill({}, u"pass phrase \u00e9"_s);
        h.Click("Command4");
        QCOMPARE(h.messages.ShownIds(), (QList<int>{190, 116}));
        const QString output = tree.Path(u"in/docs.vexo"_s);
        QVERIFY(QFileInfo::exists(output));
        const QString restored = tree.Path(u"restored"_s);
        const QString cli =
            RunCli({u"decrypt"_s, u"-q"_s, output, u"-C"_s, restored}, {}, u"pass phrase \u00e9"_s);
        QVERIFY2(!cli.startsWith(u"failed"_s), qPrintable(cli));
        QMap<QString, QByteArray> expected = tree.Contents(u"in"_s);
        expected.remove(u"docs.vexo"_s);
        expected.insert(u"lone.txt"_s, "by itself");
        QCOMPARE(tree.Contents(u"restored"_s), expected);
    }

    void CancelDuringALongEncryptionLeavesNoContainer() {
        FileTree tree;
        // Noise is stored, not compressed, so it takes this much to give the cancel time.
        const QString input = tree.WriteNoise(u"noise.bin"_s, 256 * 1024 * 1024);
        Files h;
        h.window.OpenPaths({input});
        h.Fill({}, u"pw"_s);
        h.ClickAndCancel("Command4");
        QCOMPARE(h.messages.ShownIds(), QList<int>{190}); // no success, no error
        QVERIFY(h.window.Working().CancelRequested());
        QCOMPARE(tree.Contents().keys(), QStringList{u"noise.bin"_s}); // no container, no part
        QCOMPARE(h.List()->count(), 1);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::EncryptPageTest)
#include "EncryptPageTest.moc"
