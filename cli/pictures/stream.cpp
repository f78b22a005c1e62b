#include "cli/pictures/stream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace pictures {
namespace {

constexpr size_t bufferSize = 1 << 16;

// Programs at both ends of a pipe change places less often when more fits into it: video takes two thirds of the time.
void enlarge(int file) { fcntl(file, F_SETPIPE_SZ, 1 << 20); }

[[noreturn]] void failed(const char* what) {
    const int error = errno;
    if (interruptedBy) throw Error("interrupted");
    if (error == ENOENT) throw Error(std::string(what) == "cannot be opened" ? "no such file" : "no such folder");
    throw Error(std::string(what) + ": " + std::generic_category().message(error));
}

}  // namespace

volatile int interruptedBy = 0;

namespace {
// A signal may come while nothing waits.
void checkSignals() {
    if (interruptedBy) throw Error("interrupted");
}
}  // namespace

// ---- input ----------------------------------------------------------------------------------------------------------

Input::Input(std::string path) : name_(std::move(path)) {
    if (name_ == "-") {
        name_ = "standard input";
        file_ = dup(STDIN_FILENO);
    } else {
        file_ = open(name_.c_str(), O_RDONLY | O_CLOEXEC);
    }
    if (file_ < 0) failed("cannot be opened");
    struct stat status;
    if (fstat(file_, &status) != 0) failed("cannot be opened");
    if (S_ISDIR(status.st_mode)) throw Error("not a regular file, but a folder");
    enlarge(file_);
    if (S_ISREG(status.st_mode)) total_ = status.st_size - std::max<off_t>(0, lseek(file_, 0, SEEK_CUR));
}

Input::Input(std::span<const uint8_t> bytes)
    : name_("memory"), buffer_(bytes.begin(), bytes.end()), total_(int64_t(bytes.size())) {}

Input::~Input() {
    if (file_ >= 0) close(file_);
}

size_t Input::fetch(void* to, size_t size) {
    checkSignals();
    size_t done = 0;
    while (file_ >= 0 && done < size) {
        const ssize_t count = ::read(file_, static_cast<uint8_t*>(to) + done, size - done);
        if (count < 0 && errno == EINTR && !interruptedBy) continue;
        if (count < 0) failed("cannot be read");
        if (count == 0) break;
        done += size_t(count);
    }
    return done;
}

size_t Input::read(void* to, size_t size) {
    const size_t ready = std::min(size, buffer_.size() - at_);
    if (ready > 0) std::memcpy(to, buffer_.data() + at_, ready);
    at_ += ready;
    size_t done = ready;
    if (done < size) {
        if (size - done >= bufferSize) {
            done += fetch(static_cast<uint8_t*>(to) + done, size - done);
        } else {
            fill();
            const size_t more = std::min(size - done, buffer_.size() - at_);
            if (more > 0) std::memcpy(static_cast<uint8_t*>(to) + done, buffer_.data() + at_, more);
            at_ += more;
            done += more;
            if (done < size && more > 0) {  // a pipe gives what it has
                position_ += int64_t(done);
                return done + read(static_cast<uint8_t*>(to) + done, size - done);
            }
        }
    }
    position_ += int64_t(done);
    return done;
}

// One read of what there is, behind what is left.
void Input::fill() {
    if (file_ < 0) return;
    checkSignals();
    buffer_.erase(buffer_.begin(), buffer_.begin() + ptrdiff_t(at_));
    at_ = 0;
    const size_t left = buffer_.size();
    buffer_.resize(left + bufferSize);
    ssize_t count;
    do count = ::read(file_, buffer_.data() + left, bufferSize);
    while (count < 0 && errno == EINTR && !interruptedBy);
    buffer_.resize(left + size_t(std::max<ssize_t>(count, 0)));
    if (count < 0) failed("cannot be read");
}

void Input::need(void* to, size_t size) {
    if (read(to, size) < size) throw Error("truncated");
}

int Input::get() {
    uint8_t byte;
    return read(&byte, 1) == 1 ? byte : -1;
}

std::span<const uint8_t> Input::peek(size_t size) {
    for (size_t before = size_t(-1); buffer_.size() - at_ < size && before != buffer_.size() - at_;) {
        before = buffer_.size() - at_;
        fill();
    }
    return std::span<const uint8_t>(buffer_).subspan(at_, std::min(size, buffer_.size() - at_));
}

void Input::expect(int64_t size) const {
    if (total_ && *total_ - position_ < size)
        throw Error("truncated: " + std::to_string(std::max<int64_t>(0, *total_ - position_)) + " of " +
                    std::to_string(size) + " bytes of samples");
}

// ---- output ---------------------------------------------------------------------------------------------------------

Output::Output(std::string path) : name_(std::move(path)) {
    buffer_.reserve(bufferSize);
    if (name_ == "-") {
        name_ = "standard output";
        file_ = dup(STDOUT_FILENO);
        if (file_ < 0) failed("cannot be written");
        enlarge(file_);
        return;
    }
    namespace fs = std::filesystem;
    std::error_code unknown;
    path_ = name_;
    if (fs::is_symlink(path_, unknown)) path_ = fs::weakly_canonical(path_, unknown).string();
    if (fs::is_directory(path_, unknown)) throw Error("a folder");
    if (fs::exists(path_, unknown) && !fs::is_regular_file(path_, unknown)) {
        file_ = open(path_.c_str(), O_WRONLY | O_CLOEXEC);
    } else {
        part_ = path_ + ".part" + std::to_string(getpid());
        file_ = open(part_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (file_ < 0) part_.clear();
    }
    if (file_ < 0) failed("cannot be written");
}

Output::~Output() {
    if (file_ >= 0) close(file_);
    if (!part_.empty()) unlink(part_.c_str());
}

void Output::send(const uint8_t* from, size_t size) {
    checkSignals();
    while (size > 0) {
        const ssize_t count = ::write(file_, from, size);
        if (count < 0 && errno == EINTR && !interruptedBy) continue;
        if (count < 0) failed("cannot be written");
        from += count;
        size -= size_t(count);
    }
}

void Output::write(const void* from, size_t size) {
    const auto* bytes = static_cast<const uint8_t*>(from);
    if (buffer_.size() + size > bufferSize) flush();
    if (size >= bufferSize)
        send(bytes, size);
    else
        buffer_.insert(buffer_.end(), bytes, bytes + size);
}

void Output::flush() {
    send(buffer_.data(), buffer_.size());
    buffer_.clear();
}

void Output::finish() {
    flush();
    const int file = file_;
    file_ = -1;
    if (close(file) != 0) failed("cannot be written");
    if (!part_.empty() && std::rename(part_.c_str(), path_.c_str()) != 0) failed("cannot be written");
    part_.clear();
}

}  // namespace pictures
