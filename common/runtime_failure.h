// The run-time failure of a conversion stage: an error that the stage does
// not handle itself and that the conversion driver turns into its failure
// path ("Error occurred." …), unless debug mode lets it through.
#ifndef Z4400_COMMON_RUNTIME_FAILURE_H_
#define Z4400_COMMON_RUNTIME_FAILURE_H_

#include <stdexcept>
#include <string>

namespace z4400 {

/// Raised for what would stop a conversion at run time: an overflow of a
/// 16-bit field, an index outside a fixed table, a missing cell or chart
/// element, a division by zero the stage does not guard. The message is a
/// short description for the log and for debug mode.
class RuntimeFailure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace z4400

#endif  // Z4400_COMMON_RUNTIME_FAILURE_H_
