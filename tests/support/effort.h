// How much a test tries where more is better and time is short.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__s390x__)
#define ORBCONV_TESTS_RUN_SLOWLY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORBCONV_TESTS_RUN_SLOWLY 1
#endif
#endif

namespace testsupport {

// True under the sanitizers and under the emulator of another machine.
#ifdef ORBCONV_TESTS_RUN_SLOWLY
inline constexpr bool runsSlowly = true;
#else
inline constexpr bool runsSlowly = false;
#endif

template <class T>
constexpr T effort(T usual, T whereSlow) {
    return runsSlowly ? whereSlow : usual;
}

}  // namespace testsupport
