// What the tests share. How a test is written:
//
//     #include "support/picture.h"
//
//     TEST(Gray, MatchesItsRule) {
//         expect("moxiRGBToGray_8u_C3C1R", [](const Picture& src, Picture& want, const Values&) {
//             for (int y = 0; y < src.size().height; ++y)
//                 for (int x = 0; x < src.size().width; ++x)
//                     want.set<Mox8u>(x, y, 0, rule(src.colour(x, y, 0), src.colour(x, y, 1), src.colour(x, y, 2)));
//         });
//     }
//
// picture.h    expect(): an export against plain code at all sizes, planes at guard pages with every alignment and
// step;
//              the pictures come from the catalogue, and so do the arguments and the status. Every export has one.
// library.h    The library files, loaded side by side by path. MOX_CALL(lib, moxiX)(...) calls one export with the
//              types of its prototype. A table of forms holds MOX_EXPORT(moxiX), and lib(form.function)(...) calls it.
//              Each call is noted: messages, and the note on a crash, name the export, the file and the size. Each
//              call is also checked to leave the rounding mode and the other floating-point controls as they were.
// plane.h      Plane<T>: pixels before or after a guard page, with margins, any alignment, steps of both signs; same().
// random.h     Random: seeded integers, floats, special floats.
// float_env.h  Rounding modes, flush-to-zero and the x87 control word for the length of a scope or a call.
// sizes.h      forEachSize(): the sizes around every block limit.
//
// Loops over libraries and sizes end at the first failure. The environment variable MOXCC_TEST_LIBRARY, a file's name
// (SSE4.2, static), restricts a run to it. The static library is held to the contract, which compares it with the
// others.
#ifndef SUPPORT_SUPPORT_H
#define SUPPORT_SUPPORT_H

#include <gtest/gtest.h>

#include "support/float_env.h"
#include "support/library.h"
#include "support/plane.h"
#include "support/random.h"
#include "support/sizes.h"

#endif
