#include <algorithm>
#include <cctype>
#include <cstdio>

#include "cli/commands.h"
#include "cli/terminal.h"

namespace cli {

using catalogue::Export;
using catalogue::Parameter;

namespace {

bool contains(std::string_view text, std::string_view word) {
    const auto same = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
    return std::search(text.begin(), text.end(), word.begin(), word.end(), same) != text.end();
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text.append(text.empty() ? "" : ", ").append(word);
    return text;
}

// "NV12", or "HLS 8u C3" where the field has no name for it.
std::string described(const Export& e, int side) {
    const catalogue::Side& s = e.sides[side];
    if (s.planes.empty()) return "itself";
    const std::vector<std::string> names = e.formats(side);
    return names.empty() ? s.holds + " " + s.depth + " " + s.layout : joined(names);
}

// Whether a side takes the pixel format of this name, or holds this model.
bool matches(const Export& e, int side, const std::string& word) {
    const catalogue::Side& s = e.sides[side];
    if (s.planes.empty()) return false;
    if (const catalogue::Side* named = pictures::sideNamed(word))
        return pictures::nameOf(s) == pictures::nameOf(*named);
    return contains(s.holds, word) || word == s.depth || word == s.layout;
}

// How many of the words stand for something; in order of source and destination is better.
int score(const Export& e, const std::vector<std::string>& words) {
    int points = 1;
    for (size_t i = 0; i < words.size(); ++i) {
        const bool source = matches(e, 0, words[i]), destination = matches(e, 1, words[i]);
        const bool named = !pictures::sideNamed(words[i]) && contains(e.name, words[i]);
        if (!source && !destination && !named) return 0;
        points += (i == 0 && source) + (i + 1 == words.size() && destination);
    }
    return points;
}

void line(const char* label, const std::string& text) {
    if (!text.empty()) std::printf("%-13s%s\n", label, text.c_str());
}

std::string sizeText(MoxiSize size) { return std::to_string(size.width) + "x" + std::to_string(size.height); }

std::string planesOf(const Export& e, int side) {
    const catalogue::Side& s = e.sides[side];
    const std::string name = described(e, side), plain = s.holds + " " + s.depth + " " + s.layout;
    if (s.planes.empty()) return "none: it works in place";
    std::string text = name;
    if (name != plain) text.append(" (").append(plain).append(")");
    for (const catalogue::PlaneShape& plane : s.planes) {
        text.append(&plane == &s.planes.front() ? ": " : ", ").append(std::to_string(plane.bytes));
        if (s.depth == "1u")
            text.append(" byte for eight pixels");
        else
            text.append(plane.bytes == 1 ? " byte for " : " bytes for ").append(sizeText({plane.width, plane.height}));
    }
    if (e.takesNoSteps(side)) text += "; rows without gaps";
    return text;
}

}  // namespace

void list(const ListOptions& options) {
    std::vector<std::pair<int, const Export*>> found;
    for (const Export& e : catalogue::exports())
        if (const int points = e.converts() ? score(e, options.words) : 0) found.emplace_back(-points, &e);
    if (found.empty()) {
        std::vector<std::string> names;
        for (const catalogue::Format& format : catalogue::formats()) names.emplace_back(format.name);
        for (const Export& e : catalogue::exports()) names.push_back(shortName(e));
        std::string guess;
        for (const std::string& word : options.words)
            if (guess.empty()) guess = didYouMean(word, names);
        throw pictures::Error("no export matches: " + joined(options.words) + guess);
    }
    std::ranges::stable_sort(found, {}, [](const auto& pair) { return pair.first; });
    size_t widest = 0;
    for (const auto& [points, e] : found) widest = std::max(widest, shortName(*e).size());
    for (const auto& [points, e] : found) {
        const std::string name = shortName(*e);
        if (options.names)
            std::puts(name.c_str());
        else
            std::printf("%s%*s  %s -> %s\n", bold(name).c_str(), int(widest - name.size()), "",
                        described(*e, 0).c_str(), described(*e, 1).c_str());
    }
}

void show(const std::string& name) {
    const Export& e = exportNamed(name);
    std::string prototype = "MoxStatus " + bold(e.name) + "(";
    size_t column = e.name.size() + 11;
    const size_t indent = column;
    for (const Parameter& p : e.parameters) {
        const bool last = &p == &e.parameters.back();
        if (column + p.declaration.size() > 100)
            prototype.append("\n").append(indent, ' '), column = indent;
        else if (column > indent)
            prototype.append(" ");
        prototype.append(p.declaration).append(last ? ");" : ",");
        column += p.declaration.size() + 2;
    }
    std::printf("%s\n\n%s\n\n", prototype.c_str(), e.documentation.c_str());
    if (!e.converts()) return;

    line("source", planesOf(e, 0));
    line("destination", planesOf(e, 1));
    if (e.sides[1].keepsFourth) line("", "the fourth channel is left as it is");
    line("least size",
         sizeText({std::max(1, e.least.width), std::max(1, e.least.height)}) +
             (e.tested(catalogue::Check::wholeCells) ? ", in multiples of " + sizeText(e.cell) : std::string()));
    if (const std::string odd = e.oddSizes(); !odd.empty()) line("leaves out", odd + " (--pad)");
    if (e.parameter(Parameter::weights))
        line("weights",
             std::to_string(e.weights) + (e.needsWeights ? " of them" : " of them, if not its own") + " (--weights)");
    std::string options;
    for (const ValueOption& option : valueOptions())
        if (option.taken(e)) options.append(options.empty() ? "" : ", ").append(option.name);
    if (e.takesRegion()) options.append(", --region");
    line("options", options);
    for (const catalogue::BandRule& rule : catalogue::bandRules())
        if (e.is(rule.names)) {
            line("bands", std::string(rule.beginAt) + ": " + rule.because);
            break;
        }
    if (e.dependsOnAddresses) line("addresses", "the result depends on how planes are aligned");
}

}  // namespace cli
