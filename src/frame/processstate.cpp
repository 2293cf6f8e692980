#include "frame/processstate.h"

namespace fx {

ProcessState &Process()
{
    static ProcessState state;
    return state;
}

} // namespace fx
