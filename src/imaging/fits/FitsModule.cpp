#include "imaging/fits/FitsModule.h"

#include "imaging/fits/FitsLibrary.h"

namespace tarn {

extern "C" const FitsModule TarnModule{ReadFitsHeader, ReadFitsSamples, FitsLibraryRuns};

} // namespace tarn
