#include "app/DecryptPage.h"

#include "app/FileTree.h"
#include "app/WindowHarness.h"

#include <QUrl>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::Catalogue;
using testing::FileTree;
using testing::Harness;
using testing::RunCli;
using Answer = MessageService::Answer;

namespace {

constexpr int kDialog = testing::RecordingMessageService::kFileDialog;
const QString kPassphrase = u"container pass \u00fc"_s;

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
    QString ResultLine() { return Find<QLabel>("LblDecrResult")->text(); }
};

} // namespace

class DecryptPageTest : public QObject {
    Q_OBJECT

private slots:
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

    // A tree encrypted with kelvora-cli comes back byte for byte in the window, with a line
    // that says how many files were restored where and links to that folder.
    void CliContainerDecryptsInTheWindow() {
        FileTree tree;
        tree.WriteNoise(u"in/big.bin"_s, 4 * 1024 * 1024 + 1);
        tree.Write(u"in/a/b/deep.txt"_s, "deep");
        tree.Write(u"in/a/\u00e9t\u00e9.txt"_s, "summer");
        const QString container = Container(tree);
        Decrypting h(container, tree.Path(u"out"_s));
        h.Click("Command5");
        QCOMPARE(h.messages.ShownIds(), QList<int>{}); // no success box
        QCOMPARE(tree.Contents(u"out/in"_s), tree.Contents(u"in"_s));
        QVERIFY2(h.ResultLine().startsWith(u"3 file(s) restored in <a href="_s),
                 qPrintable(h.ResultLine()));
        emit h.Find<QLabel>("LblDecrResult")
            ->linkActivated(QUrl::fromLocalFile(tree.Path(u"out"_s)).toString());
        QCOMPARE(h.messages.openedUrls,
                 QStringList{QUrl::fromLocalFile(tree.Path(u"out"_s)).toString()});
        QCOMPARE(h.Find<WorkingPanel>("FrameW")->FileBar().Max(), 3);
    }

    void DecryptAsksInOrder_data() {
        QTest::addColumn<QString>("situation");
        QTest::addColumn<QList<Answer>>("answers");
        QTest::addColumn<QStringList>("saveAnswers");
        QTest::addColumn<QList<int>>("ids");
        QTest::addColumn<QString>("existing");  // the text of out/in/note.txt afterwards
        QTest::addColumn<QString>("elsewhere"); // the text of the name chosen instead
        const auto row = [](const char* name, QList<Answer> answers, QStringList save,
                            QList<int> ids, const char* existing, const char* elsewhere) {
            QTest::newRow(name) << QString::fromLatin1(name) << answers << save << ids
                                << QString::fromUtf8(existing) << QString::fromUtf8(elsewhere);
        };
        row("no passphrase", {}, {}, {114}, "mine", "");
        row("no container named", {}, {}, {114}, "mine", "");
        row("container of 3 bytes", {}, {}, {108}, "mine", "");
        row("wrong passphrase", {}, {}, {194}, "mine", "");
        row("existing file replaced on Yes", {Answer::Yes}, {}, {178}, "note", "");
        row("existing file saved elsewhere on No", {Answer::No}, {u"elsewhere.txt"_s},
            {178, kDialog}, "mine", "note");
        row("existing file skipped when the save dialog is cancelled", {Answer::No}, {},
            {178, kDialog}, "mine", "");
    }

    void DecryptAsksInOrder() {
        QFETCH(QString, situation);
        QFETCH(QList<Answer>, answers);
        QFETCH(QStringList, saveAnswers);
        QFETCH(QList<int>, ids);
        QFETCH(QString, existing);
        QFETCH(QString, elsewhere);
        FileTree tree;
        tree.Write(u"in/note.txt"_s, "note");
        QString container = Container(tree);
        tree.Write(u"out/in/note.txt"_s, "mine");
        if (situation == u"container of 3 bytes"_s) {
            container = tree.Write(u"short.vexo"_s, "abc");
        }
        Decrypting h(situation == u"no container named"_s ? QString() : container,
                     tree.Path(u"out"_s));
        if (situation == u"no passphrase"_s) {
            h.Fill({}, {});
        } else if (situation == u"wrong passphrase"_s) {
            h.Fill({}, u"not the passphrase"_s);
        }
        h.messages.answers = answers;
        for (const QString& name : saveAnswers) {
            h.messages.saveAnswers << tree.Path(name);
        }
        h.Click("Command5");
        QCOMPARE(h.messages.ShownIds(), ids);
        QCOMPARE(h.messages.shown[0].text,
                 ids[0] == 178 ? QString::fromStdString(GetText(
                                     kEnglish, 178, tree.Path(u"out/in/note.txt"_s).toStdString()))
                               : Catalogue(kEnglish, ids[0]));
        if (ids.contains(kDialog)) {
            QCOMPARE(h.messages.shown[1].title, Catalogue(kEnglish, 110));
            QCOMPARE(h.messages.shown[1].text, tree.Path(u"out/in/note.txt"_s));
        }
        QCOMPARE(QString::fromUtf8(tree.Contents(u"out"_s).value(u"in/note.txt"_s)), existing);
        QCOMPARE(QString::fromUtf8(tree.Contents().value(u"elsewhere.txt"_s)), elsewhere);
        QCOMPARE(tree.Contents(u"out"_s).size(), 1); // nothing else written
        QCOMPARE(h.State(), u"idle: PictAmpel / Frame_0 FramePwd"_s);
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

QTEST_MAIN(kelvora::DecryptPageTest)
#include "DecryptPageTest.moc"
