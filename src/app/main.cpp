// kelvora: the desktop program. Chooses the language from the system, shows the main window
// and hands it the command line.
#include "app/CommandLine.h"
#include "app/FCrypt.h"
#include "app/LanguageId.h"
#include "app/MessageService.h"
#include "common/Random.h"
#include "common/Version.h"
#include "files/ChunkHeap.h"

#include <QApplication>
#include <QLocale>
#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace {

int SystemLanguageOffset() {
    return kelvora::LanguageOffsetForLangId(
        kelvora::WindowsLanguageIdOfLocale(QLocale::system().name().toStdString()));
}

} // namespace

int main(int argc, char* argv[]) {
    // Answered before any window exists, so that it works without a display.
    if (argc == 2 && std::string_view(argv[1]) == "--version") {
        std::printf("kelvora %s\n", kelvora::kVersionText);
        return 0;
    }
    kelvora::KeepChunkBuffersInHeap();
    QApplication application(argc, argv);
    kelvora::QtMessageService messages;
    kelvora::SystemRandom random;
    kelvora::FCrypt window(messages, random, SystemLanguageOffset());
    messages.setParent(&window);
    messages.SetLanguageSource([&window] { return window.LanguageOffset(); });
    window.show();
    // The arguments as the system split them, so a path with blanks stays one path.
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    window.Load(arguments,
                QString::fromStdString(kelvora::ProgramName(argc > 0 ? argv[0] : "kelvora")));
    return QApplication::exec();
}
