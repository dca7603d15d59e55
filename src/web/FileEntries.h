// What pages say about files, from the files themselves.
#pragma once

#include "facts/DiskFacts.h"
#include "platform/Files.h"
#include "web/GalleryRun.h"
#include "web/PageEntry.h"

#include <functional>
#include <string>

namespace tarn {

// A gallery's sources: all but the notes from the disk. `facts` must outlive the run.
GallerySources SourcesOf(DiskFacts& facts,
                         std::function<std::string(const std::string&)> noteBytes);

// All of an entry but the note and what stands beside the file, fitted into a preview box of that
// size.
EntryFacts EntryOf(DiskFacts& facts, const Files& files, const std::string& path, int boxWidth,
                   int boxHeight);

// The same picture in another size; its size text goes along.
void SetEntrySize(EntryFacts& facts, int width, int height, int boxWidth, int boxHeight);

} // namespace tarn
