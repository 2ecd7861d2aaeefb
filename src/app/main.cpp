// kelvora: the desktop program. Chooses the language from the system, shows the main window
// and hands it the command line.
#include "app/CommandLine.h"
#include "app/FCrypt.h"
#include "app/LanguageId.h"
#include "app/MessageService.h"
#include "common/Random.h"
#include "common/Version.h"

#include <QApplication>
#include <QLocale>
#include <cstdio>
#include <string_view>

namespace {

int SystemLanguageOffset() {
    const QString name = QLocale::system().name(); // "de_AT", or "C"
    const QString language = name.section(QLatin1Char('_'), 0, 0);
    const QString territory = name.section(QLatin1Char('_'), 1, 1);
    return kelvora::LanguageOffsetForLangId(
        kelvora::WindowsLanguageId(language.toStdString(), territory.toStdString()));
}

} // namespace

int main(int argc, char* argv[]) {
    // Answered before any window exists, so that it works without a display.
    if (argc == 2 && std::string_view(argv[1]) == "--version") {
        std::printf("kelvora %s\n", kelvora::kVersionText);
        return 0;
    }
    QApplication application(argc, argv);
    kelvora::QtMessageService messages;
    kelvora::SystemRandom random;
    kelvora::FCrypt window(messages, random, SystemLanguageOffset());
    messages.setParent(&window);
    window.show();
    window.Load(kelvora::JoinArguments(argc, argv),
                QString::fromStdString(kelvora::ProgramName(argc > 0 ? argv[0] : "kelvora")));
    return QApplication::exec();
}
