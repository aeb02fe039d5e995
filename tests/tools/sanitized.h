// Whether the sanitizers watch this program: each compiler says it in its own way.

#ifndef RECALCULO_TESTS_SANITIZED_H
#define RECALCULO_TESTS_SANITIZED_H

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define RECALCULO_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define RECALCULO_SANITIZED 1
#endif
#endif

#endif
