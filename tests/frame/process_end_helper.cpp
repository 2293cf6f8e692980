// Ends itself through EndProcess: "busy" with work in hand on another thread that never
// finishes, "idle" with nothing in hand. Prints what happened after EndProcess returned.
#include "frame/processend.h"

#include <chrono>
#include <optional>
#include <cstdio>
#include <cstring>
#include <thread>

int main(int argc, char **argv)
{
    const bool busy = argc > 1 && std::strcmp(argv[1], "busy") == 0;
    std::thread work([] {
        for (;;)
            std::this_thread::sleep_for(std::chrono::seconds(1));
    });
    std::optional<fx::BusyScope> scope;
    if (busy)
        scope.emplace();
    fx::EndProcess();
    std::puts("returned");
    std::fflush(stdout);
    if (busy)
        work.join(); // the work in hand: were the process not gone, this would never end
    work.detach();
    return 0;
}
