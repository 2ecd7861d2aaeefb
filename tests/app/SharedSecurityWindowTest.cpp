#include "app/DecryptPage.h"
#include "app/FileTree.h"
#include "app/PassphraseArea.h"
#include "app/SharedSecurityPanel.h"
#include "app/WindowHarness.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"

#include <QApplication>
#include <QRadioButton>
#include <QScrollBar>
#include <QToolButton>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::BannerOf;
using testing::Catalogue;
using testing::Harness;

namespace {

const QString kGreek = u"αβγ"_s;

// EnterKeys selects shared security on the files page and enters the keys through the
// scroll bar, key 1 first.
void EnterKeys(Harness& h, const QStringList& keys) {
    h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kFilesTab);
    h.Click("optMults_1");
    auto* count = h.Find<QLineEdit>("txtKeyNum");
    count->setText(QString::number(keys.size()));
    for (int i = 0; i < keys.size(); ++i) {
        h.Find<QScrollBar>("KeyScroll")->setValue(i + 1);
        h.Find<QLineEdit>("TxtCode")->setText(keys[i]);
    }
}

// RunCliWithKeys runs kelvora-cli with one --key-file per key, key 1 first.
QString RunCliWithKeys(QStringList args, const QStringList& keys, const QString& input) {
    const testing::FileTree folder;
    for (int i = 0; i < keys.size(); ++i) {
        args << u"--key-file"_s << folder.Write(u"key%1"_s.arg(i), keys[i].toUtf8() + '\n');
    }
    return testing::RunCli(args, input, QString());
}

// ShowSpy notes whether the widget it watches was shown.
struct ShowSpy : QObject {
    bool shown = false;
    bool eventFilter(QObject*, QEvent* event) override {
        shown = shown || event->type() == QEvent::Show;
        return false;
    }
};

QString Caption(Harness& h) {
    return h.Find<QLabel>("lblKeyOf")->text();
}

// Places shows the ten key places: '#' filled, '.' empty, '-' hidden.
QString Places(Harness& h) {
    QString places;
    for (int i = 0; i < kSharedKeySlots; ++i) {
        const auto* place =
            testing::FindControl<KeyPlace>(&h.window, u"SchlusselPlatz_%1"_s.arg(i));
        places += !place->isVisibleTo(&h.window.Passphrase().SharedSecurity()) ? u'-'
                  : place->IsFilled()                                          ? u'#'
                                                                               : u'.';
    }
    return places;
}

// SetCount types count over the key count, as a person would.
void SetCount(Harness& h, const char* count) {
    auto* field = h.Find<QLineEdit>("txtKeyNum");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QString::fromLatin1(count));
}

// LeaveCount moves the focus from the key count by the keyboard.
void LeaveCount(Harness& h) {
    h.Find("LstCryptFiles")->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
}

QString Warnings(Harness& h) {
    auto* label = h.Find<QLabel>("LblPwdWarning");
    return label->isHidden() ? QString() : label->text();
}

} // namespace

class SharedSecurityWindowTest : public QObject {
    Q_OBJECT

private slots:
    // In shared mode the panel shows with its captions and takes the focus; the text page hides
    // it and the mode buttons but keeps the mode; the single passphrase hides it and gives the
    // focus back to the box.
    void PanelShowsAndTakesTheFocusInSharedModeOnly() {
        Harness h;
        h.Activate();
        const auto shown = [&h] {
            return h.Names({"optMults_0", "optMults_1", "pctSharedSecurity"},
                           [](QWidget* w) { return w->isVisible(); });
        };
        QCOMPARE(shown(), u"optMults_0 optMults_1"_s);
        h.Click("optMults_1");
        QCOMPARE(shown(), u"optMults_0 optMults_1 pctSharedSecurity"_s);
        QCOMPARE(QApplication::focusWidget(), h.Find("txtKeyNum"));
        QCOMPARE(Caption(h), u"1/3"_s);
        QCOMPARE(h.Find<QToolButton>("lblNextKey_0")->toolTip(), u"Go to next key"_s);
        QCOMPARE(h.Find<QToolButton>("lblNextKey_1")->toolTip(), u"Go to previous key"_s);
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kTextTab);
        QCOMPARE(shown(), QString());
        QVERIFY(h.window.Passphrase().SharedSecurity().IsShared());
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kFilesTab);
        QCOMPARE(shown(), u"optMults_0 optMults_1 pctSharedSecurity"_s);
        h.Click("optMults_0");
        QCOMPARE(shown(), u"optMults_0 optMults_1"_s);
        QCOMPARE(QApplication::focusWidget(), h.Find("TxtCode"));
    }

    // Keys entered at places of the scroll bar are kept apart; the arrows move the caption but
    // not the scroll bar and wrap at both ends; a mode switch throws every key away.
    void ScrollBarAndArrowsWalkTheKeys() {
        Harness h;
        EnterKeys(h, {u"a"_s, u"b"_s, u"c"_s});
        QCOMPARE(Caption(h), u"3/3"_s);
        QCOMPARE(Places(h), u"###-------"_s);
        h.Find<QScrollBar>("KeyScroll")->setValue(1);
        QCOMPARE(h.Passphrase(), u"a"_s);
        h.Click("lblNextKey_1");
        QCOMPARE(Caption(h), u"3/3"_s);
        QCOMPARE(h.Passphrase(), u"c"_s);
        h.Click("lblNextKey_0");
        h.Click("lblNextKey_0");
        QCOMPARE(Caption(h), u"2/3"_s);
        QCOMPARE(h.Passphrase(), u"b"_s);
        QCOMPARE(h.Find<QScrollBar>("KeyScroll")->value(), 1);
        h.Click("optMults_0");
        QCOMPARE(h.Passphrase(), QString());
        h.Click("optMults_1");
        QCOMPARE(Places(h), u"...-------"_s);
    }

    // A count out of range keeps the focus with one message, even when a command is clicked
    // meanwhile; a count that is not a number reads as 2, a count of 1 means a single passphrase.
    void CountIsCheckedWhenTheFieldIsLeft() {
        Harness h;
        h.Activate();
        h.Click("optMults_1");
        SetCount(h, "12");
        QCOMPARE(Caption(h), u"1/12"_s);
        LeaveCount(h);
        QCOMPARE(h.messages.ShownIds(), QList<int>{kKeyCountMessageId});
        QTRY_COMPARE(QApplication::focusWidget(), h.Find("txtKeyNum"));
        SharedSecurityPanel& panel = h.window.Passphrase().SharedSecurity();
        QVERIFY(!panel.BuildKey().has_value());
        QCOMPARE(h.messages.ShownIds(), QList<int>{kKeyCountMessageId});
        QVERIFY(!panel.BuildKey().has_value());
        QCOMPARE(h.messages.ShownIds(), (QList<int>{kKeyCountMessageId, kKeyCountMessageId}));
        h.messages.shown.clear();

        SetCount(h, "x");
        QCOMPARE(h.Find<QLineEdit>("txtKeyNum")->text(), u"2"_s);
        QCOMPARE(Places(h), u"..--------"_s);
        SetCount(h, "1");
        LeaveCount(h);
        QVERIFY(!panel.IsShared());
        QVERIFY(h.Find<QRadioButton>("optMults_0")->isChecked());
        QCOMPARE(h.Find<QLineEdit>("txtKeyNum")->text(), u"2"_s);
        QVERIFY(h.messages.shown.isEmpty());

        // A made passphrase hides the sixth key place until the count changes.
        h.Click("optMults_1");
        SetCount(h, "7");
        h.Click("cmdPassgen");
        QCOMPARE(Places(h), u"#....-.---"_s);
        SetCount(h, "8");
        QCOMPARE(Places(h), u"#.......--"_s);
    }

    void CliTextUnderThreeKeysOpensInSharedMode() {
        const QStringList keys{u"Schlüssel eins"_s, u"b"_s, u"c"_s};
        const QString encrypted = RunCliWithKeys({u"encrypt-text"_s}, keys, u"geteilt"_s);
        QVERIFY2(!encrypted.startsWith(u"failed"_s), qPrintable(encrypted));
        Harness h;
        EnterKeys(h, keys);
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kTextTab);
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(encrypted);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kEnglish) + u"\ngeteilt"_s);
        QCOMPARE(h.Passphrase(), QString());
        QVERIFY(h.messages.shown.isEmpty());
        for (int slot = 0; slot < kSharedKeySlots; ++slot) {
            QCOMPARE(h.window.Passphrase().SharedSecurity().State().Slot(slot), std::string());
        }
        QCOMPARE(Places(h), u"...-------"_s);
    }

    void CliContainerUnderThreeKeysOpensInSharedMode() {
        const QStringList keys{u"eins"_s, u"zwei"_s, u"drei"_s};
        testing::FileTree tree;
        tree.Write(u"in/a/note.txt"_s, "shared contents");
        const QString container = tree.Path(u"in.vexo"_s);
        const QString cli = RunCliWithKeys(
            {u"encrypt"_s, u"-q"_s, u"-o"_s, container, tree.Path(u"in"_s)}, keys, QString());
        QVERIFY2(!cli.startsWith(u"failed"_s), qPrintable(cli));
        Harness h(kEnglish, "/filed");
        h.Find<DecryptPage>("FrameDecrypt")->SetContainer(container, tree.Path(u"out"_s));
        EnterKeys(h, keys);
        h.Find<LightTab>("TabFileCrypt")->SetActiveTab(FCrypt::kDecryptTab);
        h.Click("Command5");
        QCOMPARE(h.messages.ShownIds(), QList<int>{});
        QCOMPARE(tree.Contents(u"out/in"_s), tree.Contents(u"in"_s));
        QCOMPARE(h.window.Passphrase().SharedSecurity().State().Slot(0), std::string());
    }

    void WindowKeysOpenWhatTheCliMadeAndTheReverse() {
        // The key the window builds from its three keys serves a text that the CLI must open
        // with the same three key files.
        const QStringList keys{u"erster"_s, u"zweiter"_s, u"dritter"_s};
        Harness h;
        EnterKeys(h, keys);
        std::optional<SecretBytes> key = h.window.Passphrase().DecryptionKey(114);
        QVERIFY(key.has_value());
        CRijndael cipher;
        const TextResult made =
            EncryptText(cipher, key->bytes(), WithBanner(kEnglish, "from the window"), h.random);
        QCOMPARE(RunCliWithKeys({u"decrypt-text"_s, u"--no-banner"_s}, keys,
                                QString::fromStdString(made.text)),
                 u"from the window"_s);
        QCOMPARE(RunCliWithKeys({u"decrypt-text"_s}, {keys[2], keys[1], keys[0]},
                                QString::fromStdString(made.text)),
                 u"failed with status 1"_s);
    }

    void AnEmptyKeyStopsBeforeTheBusyState() {
        Harness h;
        EnterKeys(h, {u"a"_s, QString(), u"c"_s});
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kTextTab);
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(u"AAAA"_s);
        ShowSpy busy;
        h.Find("FrameW")->installEventFilter(&busy);
        h.Click("Command2");
        QVERIFY(!busy.shown);
        QCOMPARE(h.messages.ShownIds(), QList<int>{386});
        QCOMPARE(h.messages.shown[0].text, Catalogue(kEnglish, 386).replace(u"%s"_s, u"2"_s));
        QCOMPARE(h.Results(), u"AAAA"_s);
    }

    void PassphraseTheKeyCannotHoldIsRefusedForEncryption() {
        Harness h;
        h.Fill(u"plain"_s, kGreek);
        h.Click("Command1");
        QCOMPARE(h.messages.ShownIds(), QList<int>{588});
        QVERIFY(h.messages.shown[0].text.contains(u"'α' (U+03B1)"_s));
        QCOMPARE(h.Results(), u"plain"_s);
        QCOMPARE(h.Passphrase(), kGreek);

        // A text made elsewhere, where "αβγ" became "???", still opens.
        CRijndael cipher;
        const TextResult made = EncryptText(cipher, MakePassphraseKey("???").bytes(),
                                            WithBanner(kEnglish, "elsewhere"), h.random);
        h.Fill(QString::fromStdString(made.text), kGreek);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kEnglish) + u"\nelsewhere"_s);
    }

    void RatingWarnsOfWhatTheKeyWillNotTake() {
        Harness h(kGerman);
        h.Fill({}, u"short"_s);
        QCOMPARE(Warnings(h), QString());
        h.Fill({}, u"ab"_s + kGreek);
        QCOMPARE(Warnings(h), Catalogue(kGerman, 589).replace(u"%s"_s, u"'α' (U+03B1)"_s));
        h.Fill({}, QString(32, u'x') + u"ä"_s);
        QCOMPARE(Warnings(h), Catalogue(kGerman, 590));
        h.Fill({}, QString(32, u'ä'));
        QCOMPARE(Warnings(h), QString());
        h.Fill({}, QString(33, u'x') + kGreek);
        h.window.SetLanguage(kFrench);
        QCOMPARE(Warnings(h), Catalogue(kFrench, 589).replace(u"%s"_s, u"'α' (U+03B1)"_s) +
                                  u"\n"_s + Catalogue(kFrench, 590));
    }

    void TextWithUnsupportedCharactersIsEncryptedOnlyAfterYes() {
        Harness h;
        const QString text = u"line\nsmile 🙂 and \u0000"_s;
        h.messages.answers = {MessageService::Answer::No};
        h.Fill(text, u"secret"_s);
        h.Click("Command1");
        QCOMPARE(h.messages.ShownIds(), QList<int>{591});
        QCOMPARE(h.messages.shown[0].text, Catalogue(kEnglish, 591)
                                               .replace(u"%s"_s, u"'🙂' (U+1F642)"_s)
                                               .replace(u"%d"_s, u"12"_s));
        QCOMPARE(h.Results(), text);
        QCOMPARE(h.Passphrase(), u"secret"_s);

        h.messages.shown.clear();
        h.Click("Command1"); // Yes to the question, OK to the reminder
        QCOMPARE(h.messages.ShownIds(), (QList<int>{591, 190}));
        h.Fill(h.Results(), u"secret"_s);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kEnglish) + u"\nline\nsmile ? and ?"_s);
    }

    void WrongPassphraseLeavesTheEncryptedTextUnlessAskedToShow() {
        Harness h;
        h.Fill(u"kept"_s, u"right"_s);
        h.Click("Command1");
        const QString encrypted = h.Results();
        h.messages.shown.clear();
        h.messages.answers = {MessageService::Answer::No};
        h.Fill(encrypted, u"wrong"_s);
        h.Click("Command2");
        QCOMPARE(h.messages.ShownIds(), QList<int>{592});
        QCOMPARE(h.Results(), encrypted);
        QCOMPARE(h.Passphrase(), QString());

        h.Fill(encrypted, u"wrong"_s);
        h.Click("Command2"); // Yes: shown as it came out
        QVERIFY(h.Results() != encrypted);
        QVERIFY(!h.Results().startsWith(BannerOf(kEnglish)));
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::SharedSecurityWindowTest)
#include "SharedSecurityWindowTest.moc"
