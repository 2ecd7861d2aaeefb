#include "i18n/LocaliseForm.h"

#include "about/FrmAbout.h"
#include "app/FCrypt.h"
#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "common/FixedRandom.h"
#include "i18n/TextIds.h"
#include "mail/frmEmail.h"
#include "tools/FrmTast.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <QtTest>
#include <array>
#include <memory>
#include <set>

using namespace Qt::StringLiterals;

namespace kelvora {

namespace {

using testing::Catalogue;

// ShownText reads what a control shows, whatever its kind.
QString ShownText(const QWidget* widget) {
    for (const char* property : {"title", "plainText", "text"}) {
        if (const QVariant shown = widget->property(property); shown.isValid()) {
            return shown.toString();
        }
    }
    return {};
}

// A small window with one control of every kind the localiser labels, some of them nested.
struct SampleForm {
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    QList<QPair<QWidget*, int>> marked;

    template <typename Control> Control* Add(QWidget* parent, int germanId) {
        auto* control = new Control(parent);
        control->setProperty("Tag", QStringLiteral("#%1").arg(germanId));
        marked.append({control, germanId});
        return control;
    }

    QGroupBox* group = Add<QGroupBox>(form.get(), 145);
    QLabel* label = Add<QLabel>(group, 159);
    QPushButton* button = Add<QPushButton>(form.get(), 161);

    SampleForm() {
        form->setProperty("Tag", QStringLiteral("#394"));
        Add<QCheckBox>(group, 158);
        Add<QRadioButton>(form.get(), 390);
        Add<QLineEdit>(form.get(), 153);
        Add<QTextEdit>(group, 149);
        Add<QPlainTextEdit>(form.get(), 165);
    }
};

} // namespace

class LocaliseFormTest : public QObject {
    Q_OBJECT

private slots:
    void SwitchingLanguagesRestoresEveryCaption() {
        SampleForm sample;
        sample.button->setToolTip(QStringLiteral("#162"));
        sample.label->setToolTip(QStringLiteral("Leertaste betätigen"));
        for (const int language : {kGerman, kFrench, kGerman}) {
            LocaliseForm(sample.form.get(), language);
            QCOMPARE(sample.form->windowTitle(), Catalogue(language, 394));
            for (const auto& [control, germanId] : sample.marked) {
                QCOMPARE(ShownText(control), Catalogue(language, germanId));
            }
            // A tooltip is translated only while it still is a mark, so it keeps the first
            // language.
            QCOMPARE(sample.button->toolTip(), Catalogue(kGerman, 162));
            QCOMPARE(sample.label->toolTip(), QStringLiteral("Leertaste betätigen"));
        }
    }

    // Marks that name no text of the language, or no text at all, leave the control as it was;
    // only the first ampersand of a title goes.
    void MissingTextsLeaveTheControlAndTitlesLoseOneAmpersand() {
        QWidget form;
        form.setWindowTitle(QStringLiteral("&Datei & Co"));
        auto* back = new QPushButton(&form);
        back->setProperty("Tag", QStringLiteral("#182"));
        auto* noNumber = new QLabel(QStringLiteral("kept"), &form);
        noNumber->setProperty("Tag", QStringLiteral("#abc"));
        noNumber->setToolTip(QStringLiteral("#182"));

        LocaliseForm(&form, kFrench); // French has no text 182
        QCOMPARE(form.windowTitle(), QStringLiteral("Datei & Co"));
        QCOMPARE(noNumber->text(), QStringLiteral("kept"));
        QCOMPARE(noNumber->toolTip(), QStringLiteral("#182"));
        LocaliseForm(&form, kSpanish);
        LocaliseForm(&form, kFrench);
        QCOMPARE(back->text(), QString::fromUtf8("Volver al menú principal"));
    }

    void FlagOfTheLanguageIsMarked() {
        QWidget form;
        const QStringList names{QStringLiteral("ImageDE"), QStringLiteral("ImageEN"),
                                QStringLiteral("ImageES"), QStringLiteral("ImageFR")};
        for (const QString& name : names) {
            (new QLabel(&form))->setObjectName(name);
        }
        // Marking one language after another also checks that the previous border goes; 1000 is
        // no language and marks nothing.
        const std::array languages{kGerman, kEnglish, kSpanish, kFrench, 1000};
        for (std::size_t i = 0; i < languages.size(); ++i) {
            MarkLanguageFlag(&form, languages[i]);
            for (const QLabel* flag : form.findChildren<QLabel*>()) {
                const bool marked = i < 4 && flag->objectName() == names[static_cast<qsizetype>(i)];
                QCOMPARE(flag->frameShape(), marked ? QFrame::Box : QFrame::NoFrame);
                QCOMPARE(flag->property("BorderStyle").toInt(), marked ? 1 : 0);
            }
        }
    }

    // Every marked control of the real windows shows its mark's text in each language, and every
    // mark names a text of the named-text header, which the catalogue test checks in every
    // language.
    void RealWindowsShowTheTextsOfTheirMarks() {
        testing::RecordingMessageService messages;
        testing::FixedRandom random;
        QLineEdit passphrase;
        const std::set<int> named(kNamedTextIds.begin(), kNamedTextIds.end());
        for (const int language : {kGerman, kEnglish, kSpanish, kFrench}) {
            FCrypt main(messages, random, language);
            main.Load(std::string(), u"kelvora"_s);
            frmEmail mail(messages, language);
            FrmTast keyboard(passphrase, language, 0x04070407);
            std::vector<QWidget*> windows{&main, &mail, &keyboard};
            std::vector<std::unique_ptr<FrmAbout>> about;
            for (const double draw : {0.0, 0.5, 1.0}) { // one draw for each panel
                windows.push_back(about.emplace_back(new FrmAbout(messages, language, draw)).get());
            }
            int marks = 0;
            for (QWidget* window : windows) {
                for (QWidget* control : window->findChildren<QWidget*>()) {
                    const QString mark = control->property("Tag").toString();
                    if (!mark.startsWith(u'#')) {
                        continue;
                    }
                    const int id = mark.mid(1).toInt();
                    QVERIFY2(named.contains(id), qPrintable(mark));
                    QCOMPARE(ShownText(control), Catalogue(language, id));
                    ++marks;
                }
            }
            QVERIFY2(marks > 40, qPrintable(QString::number(marks)));
        }
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::LocaliseFormTest)
#include "LocaliseFormTest.moc"
