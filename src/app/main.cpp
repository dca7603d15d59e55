#include "app/Application.h"
#include "app/House.h"
#include "app/SecondStart.h"
#include "app/about/AboutText.h"
#include "app/start/StartPath.h"
#include "common/paths.h"
#include "decoder/DecoderPool.h"
#include "imaging/PictureLoader.h"
#include "platform/Clipboard.h"
#include "platform/CrashNote.h"
#include "platform/Desktop.h"
#include "platform/EndOfProgram.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "platform/SettingsStore.h"
#include "platform/Sound.h"
#include "widgets/ClearOutlines.h"
#include "widgets/Dialogs.h"
#include "widgets/webpane/PageBrowser.h"

#include <QIcon>
#include <QStyle>
#include <QTimer>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstring>

namespace {

constexpr char kUsage[] = "usage: tarn-view [--help | --version] [PATH...]\n"
                          "Shows the pictures of a folder; a file is shown first. Of several\n"
                          "paths, as a file manager hands them over, the first counts.\n";

constexpr std::chrono::milliseconds kPatience(20); // an answer to a key seems to come at once
constexpr unsigned kLongestEnd = 10;               // seconds, with all kept
constexpr std::chrono::milliseconds kSettled(300); // the window stands, with its picture

// Answers --help and --version; -1 to go on.
int AnswerOptions(int argc, char** argv) {
    if (argc != 2) return -1;
    if (std::strcmp(argv[1], "--help") == 0) return std::fputs(kUsage, stdout), 0;
    if (std::strcmp(argv[1], "--version") == 0)
        return std::printf("tarn-view %s\n", tarn::ShellState().Version.c_str()), 0;
    return -1;
}

} // namespace

int main(int argc, char** argv) {
    if (const int answer = AnswerOptions(argc, argv); answer >= 0) return answer;
    tarn::PageBrowser::PrepareProgram();
    tarn::Application application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // the player's library reads numbers by it
    QApplication::setApplicationName(QStringLiteral("tarn-view"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setDesktopFileName(QStringLiteral("tarn-view"));
    QApplication::setStyle(new tarn::ClearOutlines(QApplication::style()->name()));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("tarn-view")));
    if (argc > 1 && std::strncmp(argv[1], "--", 2) == 0) {
        std::fputs(kUsage, stderr); // what the toolkit knows is taken out by now
        return 2;
    }
    // The program ends by its own steps, not with its last visible window.
    QApplication::setQuitOnLastWindowClosed(false);

    const auto files = tarn::MakeFiles();
    const std::string path = argc > 1 ? argv[1] : "";
    tarn::SecondStart second;
    if (second.HandOver(tarn::HandedOver(path, *files))) return 0;

    tarn::KeepCrashNotes(files->StateFolder(),
                         tarn::AboutText(tarn::ShellState().Version, {}, tarn::Versions::AsBuilt));
    tarn::UseDecoders();
    const auto settings = tarn::MakeUserSettingsStore();
    const auto events = tarn::MakeEventPump();
    const auto dialogs = tarn::MakeDialogs();
    const auto sound = tarn::MakeSound();
    const auto printing = tarn::MakePrinting(*files);
    const auto desktop = tarn::MakeDesktop();
    const auto clipboard = tarn::MakeClipboard();
    tarn::House house(
        {*files, *settings, *events, *dialogs, *sound, *desktop, *clipboard, *printing});
    second.Listen([&house](const std::string& handed) { house.Open(handed); });
    application.onThrown = [&house](const std::string& fault) { house.TellThrown(fault); };
    house.display.SetPatience(kPatience);
    if (!house.Start(path, tarn::PictureLoader::ReaderError())) return 1;
    QTimer::singleShot(kSettled, [] { tarn::StartDecoderAhead(); });
    const int status = events->ProgramEnds() ? 0 : QApplication::exec();
    tarn::EndWithin(kLongestEnd, status);
    return status;
}
