#pragma once

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

/// Makes things that do not depend on each other on all processors, a few ahead of what is asked for, and gives them in
/// their order.
template <class Thing>
class MadeAhead {
public:
    /// `make` is told which is meant, from 0, and throws nothing. It is called by several threads at a time, or by that
    /// of `next` alone if there is just one thing or the system gives no more threads.
    MadeAhead(std::size_t count, std::function<Thing(std::size_t)> make) : count(count), make(std::move(make))
    {
        const auto wanted = std::min<std::size_t>({std::thread::hardware_concurrency(), count, mostThreads});
        if (wanted < 2)
            return;
        try {
            for (std::size_t i = 0; i < wanted; ++i)
                threads.emplace_back([this] { work(); });
        } catch (const std::system_error&) { // those that there are do the work
        }
    }

    ~MadeAhead()
    {
        {
            const std::lock_guard lock(mutex);
            count = 0;
        }
        changed.notify_all();
        for (std::thread& thread : threads)
            thread.join();
    }

    MadeAhead(const MadeAhead&) = delete;
    MadeAhead& operator=(const MadeAhead&) = delete;

    /// The next thing. There must be one.
    Thing next()
    {
        if (threads.empty())
            return make(given++);
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return made.contains(given); });
        Thing thing = std::move(made.extract(given++).mapped());
        lock.unlock();
        changed.notify_all();
        return thing;
    }

private:
    static constexpr std::size_t mostThreads = 4;
    static constexpr std::size_t mostAhead = 8; // what is made takes memory until it is asked for

    void work()
    {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return begun >= count || begun < given + mostAhead; });
            if (begun >= count)
                return;
            const std::size_t number = begun++;
            lock.unlock();
            Thing thing = make(number);
            lock.lock();
            made.emplace(number, std::move(thing));
            changed.notify_all();
        }
    }

    std::size_t count;
    std::function<Thing(std::size_t)> make;
    std::mutex mutex;
    std::condition_variable changed;
    std::map<std::size_t, Thing> made;
    std::size_t begun = 0;
    std::size_t given = 0;
    std::vector<std::thread> threads;
};
