#pragma once

/// VRN_ADDRESS_SANITIZER is defined in a build with the address sanitizer, which compilers
/// tell in two ways.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VRN_ADDRESS_SANITIZER
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define VRN_ADDRESS_SANITIZER
#endif
