#include "moxcc/version.h"

#include "frame/entry.h"

namespace q4 {
namespace {
constexpr MoxLibraryVersion libraryVersion = {
    2019, 0, 0, 59881, {'q', '4', 0, 0}, "moxCC SSE4.2 (q4)", "2019.0.0 Gold (r59881)", "Jul 12 2018"};
}

template <>
constexpr auto entry<moxccGetLibVersion> = [] { return &libraryVersion; };

}  // namespace q4

#include "version.inc"
