// moxcc: any conversion of the library on pictures and video, in files and pipes.
#include <unistd.h>
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>

#include "cli/commands.h"
#include "cli/terminal.h"
#include "moxcc/version.h"

namespace {

using cli::UsageError;

constexpr const char* examples = R"(
Examples:
  $ moxcc list nv12 rgb
  $ moxcc show RGBToHLS_8u_C3R
  $ moxcc run RGBToGray_8u_C3C1R photo.png -o gray.png
  $ moxcc run YCbCr420ToRGB_8u_P3C3R clip.y4m -o 'frames/%04d.png' --threads 2
  $ moxcc run CFAToRGB_16u_C1C3R raw.pgm --grid bggr -o out.png
  $ moxcc run ReduceBits_8u_C3R photo.png --levels 4 --dither fs -o few.png
  $ moxcc run RGBToHLS_8u_C3R photo.png --raw -o hls.raw
  $ moxcc run HLSToRGB_8u_C3R hls.raw --size 640x480 -o back.png
  $ moxcc compare photo.png back.png
  $ ffmpeg -i in.mp4 -f yuv4mpegpipe - | moxcc run YCbCr420_8u_P3P2R - -o clip_640x480.nv12

Exit status:
  0; 1 for bad input or a full disk; 2 for wrong arguments.)";

constexpr const char* runNotes = R"(
Pictures and video are PNG, PNM, PAM, PFM, Y4M, or raw planes: by default as the
export takes them, or as --format says (NV12, yuv420p, RGB_16s_C3 ...). Layouts
of the same samples are changed into what the export takes, and depths of gray
and RGB are scaled. The name behind -o says how the result is written: .png .ppm
.pgm .pbm .pnm .pam .pfm .y4m; other names and pipes get PNM, PAM, PFM or Y4M if
the result lies in memory as these have it, and raw samples if not. %04d in the
name gives each frame a file.)";

void addLayout(CLI::App& command, cli::RawOptions& layout) {
    command.add_option("--size", layout.size, "of raw planes, as 640x480")->type_name("WxH");
    command.add_option("--format", layout.format, "pixel format of raw planes: NV12, yuv420p, RGB_16s_C3 ...")
        ->type_name("NAME");
}

// What the arguments ask for, or the status to leave with.
int act(int argc, char** argv) {
    CLI::App app{"Pixel conversions with every output bit defined, on pictures and video.", "moxcc"};
    app.set_version_flag("--version", std::string("moxcc ") + moxccGetLibVersion()->version);
    app.set_help_all_flag("--help-all", "Help for all commands");
    app.footer(examples);
    app.require_subcommand(1);

    cli::ListOptions listing;
    CLI::App* const list = app.add_subcommand("list", "The exports that match: by name, model or pixel format");
    list->add_option("words", listing.words, "as nv12 rgb: what the source holds, what the destination holds");
    list->add_flag("--names", listing.names, "names only");
    list->callback([&] { cli::list(listing); });

    std::string shown;
    CLI::App* const show = app.add_subcommand("show", "What an export takes: prototype, layouts, limits, bands");
    show->add_option("export", shown, "its name, with or without moxi")->required();
    show->callback([&] { cli::show(shown); });

    cli::RunOptions running;
    CLI::App* const run = app.add_subcommand("run", "Convert pictures or video");
    run->add_option("export", running.name, "its name, with or without moxi")->required();
    run->add_option("input", running.inputs, "files, one after the other; - is standard input")->required();
    run->add_option("-o,--output", running.output, "file; - is standard output")->type_name("FILE");
    addLayout(*run, running.layout);
    run->add_flag("--raw", running.raw, "write raw samples, and say how they lie");
    run->add_flag("--md5", running.md5, "print a sum of the result's samples");
    run->add_flag("--time", running.time, "print the speed");
    run->add_option("--threads", running.threads, "convert in so many bands at once")->check(CLI::Range(1, 256));
    run->add_flag("--pad", running.pad, "convert odd sizes whole: repeat the last column and row, and cut the result");
    for (const cli::ValueOption& option : cli::valueOptions())
        run->add_option_function<std::string>(
               option.name, [&](const std::string& text) { running.values.emplace_back(&option, text); },
               option.help + (option.names ? std::string(": ") + option.names : std::string()))
            ->type_name(option.names ? "NAME" : "NUMBER");
    run->add_option("--weights", running.weights, "numbers, as 0.3,0.6,0.1, or a file of them")->type_name("LIST");
    run->add_option("--region", running.region, "of a Bayer picture, as X,Y,WIDTH,HEIGHT")->type_name("RECT");
    run->add_option("--rate", running.rate, "frames a second of Y4M that came without, as 30000:1001")
        ->type_name("N:D");
    run->add_flag("-q,--quiet", running.quiet, "no words about layouts and odd sizes");
    run->footer(runNotes);
    run->callback([&] { cli::run(running); });

    cli::CompareOptions comparing;
    CLI::App* const compare = app.add_subcommand("compare", "PSNR, the largest difference, and where it is");
    compare->add_option("a", comparing.a, "picture or video")->required();
    compare->add_option("b", comparing.b, "picture or video")->required();
    addLayout(*compare, comparing.layout);
    compare->add_option("--psnr", comparing.least, "exit status 1 below so many decibels")->type_name("DB");
    compare->callback([&] { cli::compare(comparing); });

    const CLI::App* const commands[] = {list, show, run, compare};
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        std::vector<std::string> names, options;
        const CLI::App* in = &app;
        for (const CLI::App* command : commands) {
            names.push_back(command->get_name());
            if (command->parsed()) in = command;
        }
        for (const CLI::Option* option : in->get_options()) options.push_back(option->get_name());
        std::string guess;
        if (in == &app && argc > 1) guess = argv[1][0] == '-' ? "" : cli::didYouMean(argv[1], names);
        for (const std::string& left : in->remaining())
            if (guess.empty() && left.starts_with("-")) guess = cli::didYouMean(left, options);
        throw UsageError(error.what() + guess);
    }
    return 0;
}

void onSignal(int number) { pictures::interruptedBy = number; }

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    // A read or write that waits ends, and unfinished files go.
    struct sigaction action = {};
    action.sa_handler = onSignal;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
    int status = 0;
    try {
        status = act(argc, argv);
        if (std::fflush(stdout) != 0) throw pictures::Error("standard output: cannot be written");
    } catch (const UsageError& error) {
        std::fprintf(stderr, "moxcc: %s\n", error.what());
        status = 2;
    } catch (const std::exception& error) {
        if (!pictures::interruptedBy) std::fprintf(stderr, "moxcc: %s\n", error.what());
        status = 1;
    }
    if (pictures::interruptedBy) {
        std::signal(pictures::interruptedBy, SIG_DFL);
        std::raise(pictures::interruptedBy);
    }
    return status;
}
