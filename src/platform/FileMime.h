// Files as data for other programs, on the clipboard and under the pointer.
#pragma once

#include "platform/Clipboard.h"

class QMimeData;

namespace tarn {

// Addresses, and the words of the file managers for cut or copy. The caller owns it.
QMimeData* MimeOf(const ClipboardFiles& files);

// No paths when it holds no local files.
ClipboardFiles FilesIn(const QMimeData& data);

} // namespace tarn
