#include "decoder/program/SkyAnswers.h"

#include "imaging/RawModule.h"
#include "imaging/fits/FitsFile.h"
#include "imaging/fits/FitsLibrary.h"
#include "imaging/fits/SkyFile.h"
#include "imaging/fits/SkyWire.h"
#include "imaging/xisf/XisfFile.h"
#include "imaging/xisf/XisfLibraries.h"
#include "platform/Modules.h"
#include "platform/OpenRegular.h"

#include <new>

namespace tarn {

namespace {

std::optional<FitsSamples> SamplesFor(const RequestHead& head, int file, std::string& error) {
    const std::string name = NameOfOpen(file);
    if (head.format == DecoderFormat::Xisf) return ReadXisfSamples(name, head.image, error);
    if (head.format == DecoderFormat::Fits) return ReadFitsSamples(name, head.image, error);
    const auto* raw = FromModule<RawModule>();
    const FileHandle stream = OpenRegular(name, error);
    if (!raw) error = "The program's reader of raw files is not installed";
    return raw && stream ? raw->samples(stream.get(), error) : std::nullopt;
}

} // namespace

void LoadSkyReaders() {
    FitsLibraryRuns();
    XisfLibrariesRun();
    FromModule<RawModule>();
}

void AnswerSkyHeader(const RequestHead& head, int file, Reply& reply) {
    const auto read = head.format == DecoderFormat::Xisf ? ReadXisfHeader : ReadFitsHeader;
    if (const auto header = read(NameOfOpen(file), head.image, reply.error))
        reply.bytes = WireOf(*header);
}

void AnswerSkySamples(const RequestHead& head, int file, Reply& reply) {
    const auto samples = SamplesFor(head, file, reply.error);
    if (!samples) return;
    const std::size_t each = samples->words ? sizeof(std::uint16_t) : sizeof(float);
    reply.bytes = WireOf(*samples);
    const void* const from =
        samples->words ? static_cast<const void*>(samples->words.get()) : samples->floats.get();
    reply.used = samples->All() * each;
    std::string rest; // what could not be read is there, and black
    if (samples->count < samples->All()) rest.resize((samples->All() - samples->count) * each);
    reply.memory = SharedMemory::Filled(
        {{static_cast<const char*>(from), samples->count * each},
         rest,
         reply.bytes.size() > kMostInline ? std::string_view(reply.bytes) : std::string_view()});
    if (!reply.memory) throw std::bad_alloc();
}

} // namespace tarn
