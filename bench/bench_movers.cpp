// What is found of movers in many made nights: of each speed how many of how many, for some
// strengths, and how many tracks that are none. Nights are of 30 frames, shifted and turned between
// each other, with hot pixels, hits, trails and stars that vary; every second has a half turn.
#include "MadeNights.h"

#include <cstdio>
#include <cstdlib>
#include <map>

using namespace tarn;
using namespace tarn::testing;

int main(int argc, char** argv) {
    const unsigned nights = argc > 1 ? unsigned(std::atoi(argv[1])) : 10;
    for (const double exposed : {0.9, 0.0})
        for (const double minutes : {5.0, 2.0, 1.0})
            for (const double signal : {10.0, 8.0}) {
                std::map<double, int> found;
                int all = 0;
                int wrong = 0;
                for (unsigned seed = 100; seed < 100 + nights; ++seed) {
                    const double turn = seed % 2 == 0 ? 180 : 2.0 * (seed % 3);
                    const MadeNight night({seed, 30, minutes, 0.2 * (seed % 5), turn, exposed},
                                          SomeMovers(seed * 31, signal, minutes / 2));
                    const NightSurvey survey = SurveyOf(night);
                    for (const TrueMover& mover : night.Movers()) ++found[mover.speed];
                    for (const double speed : survey.missed) --found[speed];
                    all += int(night.Movers().size() - survey.missed.size());
                    wrong += int(survey.wrong.size());
                }
                std::printf("exposed %g of %g minutes, signal %g: %d of %u, wrong %d; by speed",
                            exposed, minutes, signal, all, 8 * nights, wrong);
                for (const auto& [speed, count] : found) std::printf(" %g: %d", speed, count);
                std::printf("\n");
                std::fflush(stdout);
            }
    return 0;
}
