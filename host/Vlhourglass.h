#pragma once

#include "Vlexport.h"

// Shows the hourglass cursor while it lives and puts the previous cursor back, also when a step fails.
// Does nothing in a process without windows.
class VLHOST_API THourglass
{
public:
    THourglass();
    ~THourglass();
    THourglass(const THourglass&) = delete;
    THourglass& operator=(const THourglass&) = delete;

private:
    bool m_shown;
};
