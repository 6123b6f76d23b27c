#include "foundation/error.h"

namespace ts4 {

EWTessalyError::EWTessalyError(std::int32_t code, const std::string& message)
    : std::runtime_error(message), code_(code) {}

}  // namespace ts4
