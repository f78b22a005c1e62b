// All readers of pictures on what a fuzzer makes up: frames, or an Error.
#include "cli/pictures/formats.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    pictures::Frame frame, repacked;
    try {
        pictures::Raw raw;
        if (size > 0 && data[0] == 'R') raw = {true, {22, int(size % 7) + 1}, pictures::sideNamed("NV12")};
        pictures::Input input({data, size});
        const pictures::Reader read = pictures::open(input, raw);
        for (int frames = 0; frames < 4 && read(frame); ++frames) {
            // Every sample is there, and fits into the format that a result of this kind would have.
            for (const pictures::Format& format : pictures::formats())
                if (const catalogue::Side* side = format.stores(frame.side, frame.alpha)) {
                    repacked.shape(*side, frame.size);
                    pictures::repack(frame, repacked);
                }
        }
    } catch (const pictures::Error&) {
    }
    return 0;
}
