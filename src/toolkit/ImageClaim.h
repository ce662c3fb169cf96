#pragma once

#include <cstdint>

/// How large a picture says that it is. Nothing of that has been checked.
struct ImageClaim {
    std::uint64_t width = 0; ///< In pixels, as the height.
    std::uint64_t height = 0;
    std::uint64_t channels = 0; ///< Bytes a pixel takes once decoded.
};
