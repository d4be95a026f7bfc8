#include "StandardOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "HostError.h"

void StandardOutput::Prepare()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            // The lowest free number is this one. Opened the wrong way round, so that its use fails as before.
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

bool StandardOutput::HasFailed()
{
    return !std::cout || std::ferror(stdout) != 0;
}

void StandardOutput::Require()
{
    std::cout.flush();
    std::fflush(stdout);
    if (HasFailed()) {
        throw HostError(ExitCode::Failure, FAILURE);
    }
}
