#pragma once

#include <pthread.h>
#include <semaphore.h>

// Starts a thread that waits for ever. What it runs is the system's, so that it outlives the
// library.
inline bool startIdleThread() {
    void* const wait = reinterpret_cast<void*>(&sem_wait);
    auto* const semaphore = new sem_t;
    sem_init(semaphore, 0, 0);
    pthread_t thread;
    return pthread_create(&thread, nullptr, reinterpret_cast<void* (*)(void*)>(wait), semaphore) ==
               0 &&
           pthread_detach(thread) == 0;
}
