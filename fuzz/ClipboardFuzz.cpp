// Takes the input for files that another program put on the clipboard - a line for each of its
// three forms, addresses parted by tabs - and for a note that goes there as text.
#include "Demand.h"
#include "Input.h"

#include "fileops/ClipboardText.h"
#include "platform/FileMime.h"

#include <QMimeData>

#include <algorithm>
#include <memory>

using namespace tarn;
using namespace tarn::fuzz;

namespace {

void TryFiles(Input input) {
    QMimeData data;
    data.setData(QStringLiteral("x-special/gnome-copied-files"),
                 QByteArray::fromStdString(input.Line()));
    data.setData(QStringLiteral("application/x-kde-cutselection"),
                 QByteArray::fromStdString(input.Line()));
    std::string addresses = input.Rest();
    data.setData(QStringLiteral("text/uri-list"), QByteArray::fromStdString(addresses));
    const ClipboardFiles files = FilesIn(data);
    for (const std::string& path : files.paths)
        Demand(path.starts_with('/') && path.find('\0') == std::string::npos);
    const std::unique_ptr<QMimeData> again(MimeOf(files));
    Demand(FilesIn(*again) == files);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input(data, size);
    TryFiles(input);
    const std::string note = input.Rest();
    const std::string text = NotesCameraText(note, {note, "  a row "}, true, true);
    Demand(text.starts_with(note) && text.ends_with("a row\r\n"));
    PictureInfo info;
    info.PictureDate = note;
    Demand(NotesCameraLine(note, info).size() >= 2 * note.size());
    return 0;
}
