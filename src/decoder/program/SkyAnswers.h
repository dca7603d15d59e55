// What the decoder process says of files of telescopes.
#pragma once

#include "decoder/program/Answers.h"

namespace tarn {

void LoadSkyReaders();
void AnswerSkyHeader(const RequestHead& head, int file, Reply& reply);
void AnswerSkySamples(const RequestHead& head, int file, Reply& reply);

} // namespace tarn
