// Reads foreign files for the program that has started it, and can do nothing else by then.
#include "decoder/program/Answers.h"
#include "decoder/program/Rights.h"
#include "decoder/program/Serve.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstring>

#include <sys/socket.h>

namespace {

bool HasSocket() {
    int type = 0;
    socklen_t size = sizeof type;
    return ::getsockopt(tarn::kDecoderSocket, SOL_SOCKET, SO_TYPE, &type, &size) == 0 &&
           type == SOCK_SEQPACKET;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2 || !HasSocket()) {
        std::fputs("tarn-decoder reads files for tarn-view, which starts it itself.\n", stderr);
        return 2;
    }
    const bool clips = std::strcmp(argv[1], "clips") == 0;
    // It tells the toolkit where its plug-ins are.
    const QCoreApplication application(argc, argv);
    tarn::LoadReaders(clips ? tarn::DecoderKind::Clips : tarn::DecoderKind::Pictures);
    tarn::Serve(tarn::GiveUpRights(), tarn::AnswerTo);
}
