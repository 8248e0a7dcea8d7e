// Defines ORVELASN1_TESTS_SANITIZED where a sanitizer with its own allocator checks this program.
#ifndef ORVELASN1_TESTS_SANITIZERS_H
#define ORVELASN1_TESTS_SANITIZERS_H

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ORVELASN1_TESTS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ORVELASN1_TESTS_SANITIZED 1
#endif
#endif

#endif
