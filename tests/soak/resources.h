#pragma once

/// What this process holds, as the system tells it.
struct Resources
{
    long residentKiB = 0;
    int openFiles = 0;
    int threads = 0;

    static Resources now();
};
