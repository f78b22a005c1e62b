// One call of one export against all that every export promises.
#ifndef CONTRACT_CONTRACT_H
#define CONTRACT_CONTRACT_H

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "contract/faults.h"
#include "support/library.h"
#include "support/plane.h"
#include "support/random.h"

namespace moxtest {

/// What a call is made of, but for where its planes lie: sizes, numbers and the planes' bytes.
struct Inputs {
    Inputs(const catalogue::Export& form, Random& random);

    const catalogue::Export* form;
    std::vector<Argument> arguments;             // numbers and sizes
    MoxiSize size[2];                            // of the planes of each side
    int rowsAround = 0;                          // rows of the picture above and below the slice
    std::vector<std::vector<uint8_t>> bytes[2];  // of each plane, rows without gaps
    std::vector<uint8_t> weights;                // empty: a null pointer
    bool buffer = true;
};

/// The planes of a call, each ending or starting at a guard page or at any address, and the arguments that name them.
class Scene {
  public:
    Scene(const Inputs& inputs, Random& random);

    const catalogue::Export& form() const { return *inputs_->form; }
    std::vector<Argument> arguments;

    /// Puts back the arguments, and what every plane held.
    void restore();
    /// The rows of the destination, without gaps.
    std::vector<uint8_t> result() const;
    /// What was written that may not be: beside the rows, or anywhere.
    std::string strayWrites(bool anywhere) const;

  private:
    const Inputs* inputs_;
    std::vector<std::unique_ptr<PlaneBytes>> planes_[2], before_, others_;
    void* pointers_[2][4] = {};
    void* arrays_[2][4] = {};  // what the arguments point to
    std::vector<Argument> given_;
    int32_t steps_[2][4] = {};
};

/// Calls the export of a file.
MoxStatus call(const Library& lib, const catalogue::Export& form, std::span<const Argument> arguments);

/// Whether two results of a form are equal, any NaN for any NaN.
bool sameResult(const catalogue::Export& form, const std::vector<uint8_t>& a, const std::vector<uint8_t>& b);

/// What a call drawn from the random values does against the contract; empty if all is well.
std::string breach(const catalogue::Export& form, Random& random);

}  // namespace moxtest

#endif
