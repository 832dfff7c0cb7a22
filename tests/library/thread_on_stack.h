#ifndef TESTS_LIBRARY_THREAD_ON_STACK_H
#define TESTS_LIBRARY_THREAD_ON_STACK_H

#include <pthread.h>

#include <gtest/gtest.h>

#include "tests/support/guarded_text.h"

/** Runs something on a thread that has this memory for its stack, until it is done. */
template <typename Work>
void runOnStack(const GuardedMemory &stack, Work work)
{
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstack(&attributes, stack.data(), stack.size()), 0);
    const auto run = [](void *itself) -> void * {
        (*static_cast<Work *>(itself))();
        return nullptr;
    };
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

#endif
