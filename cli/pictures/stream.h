// Bytes in and out: files, pipes, and memory.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/pictures/frame.h"

namespace pictures {

class Input {
  public:
    /// "-" is standard input.
    explicit Input(std::string path);
    explicit Input(std::span<const uint8_t> bytes);
    Input(const Input&) = delete;
    ~Input();

    const std::string& name() const { return name_; }
    /// Fewer than asked for at the end only.
    size_t read(void* to, size_t size);
    /// Throws Error where fewer are left.
    void need(void* to, size_t size);
    int get();  // a byte, or -1
    /// What follows, without taking it.
    std::span<const uint8_t> peek(size_t size);
    bool atEnd() { return peek(1).empty(); }
    /// Throws Error where it is known that fewer bytes follow: before room is made for what is not there.
    void expect(int64_t size) const;
    int64_t position() const { return position_; }
    std::optional<int64_t> total() const { return total_; }

  private:
    void fill();
    size_t fetch(void* to, size_t size);

    std::string name_;
    int file_ = -1;
    std::vector<uint8_t> buffer_;
    size_t at_ = 0;
    int64_t position_ = 0;
    std::optional<int64_t> total_;
};

/// A file appears under its name when it is whole, or not at all. What is no regular file is written as it is.
class Output {
  public:
    /// "-" is standard output.
    explicit Output(std::string path);
    Output(const Output&) = delete;
    ~Output();

    const std::string& name() const { return name_; }
    void write(const void* from, size_t size);
    void write(const std::string& text) { write(text.data(), text.size()); }
    void flush();
    void finish();

  private:
    void send(const uint8_t* from, size_t size);

    std::string name_, path_, part_;
    int file_ = -1;
    std::vector<uint8_t> buffer_;
};

/// Set by a signal: reading and writing then end with Error, so that no unfinished files stay.
extern volatile int interruptedBy;

}  // namespace pictures
