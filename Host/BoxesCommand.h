#pragma once

#include <string>
#include <vector>

// qtbhost boxes: the bounding boxes of an assembly.
struct BoxesOptions
{
    std::string assembly;
    std::vector<std::string> marks; // paths of products to mark
    std::string png;                // picture; empty for none
    int size = 1000;                // of the picture, in pixels
    std::string schema;             // empty for the example schema
    std::string language;           // empty for English
};

// Lists the boxes and draws them. Raises HostError, also for an assembly without boxes.
int RunBoxes(const BoxesOptions& options);
