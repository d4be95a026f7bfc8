#pragma once

#include <string>

// A structure of few products in more places than can be visited, to stand between <products> and </products>: forty
// product files, each with the instances x and y of the next, and in the last one a part. The part numbers are the
// numbers 0 to 39 behind the prefix, and L40; below the product with the number n are 2 to the power of 40 - n parts.
inline std::string QTBProductLadder(const std::string& prefix = "L")
{
    std::string ladder;
    for (int i = 0; i < 40; ++i) {
        const std::string number = std::to_string(i);
        const std::string below = std::to_string(i + 1);
        ladder += "<product id=\"" + number + "\" file=\"" + number + ".CATProduct\" partNumber=\"" + prefix + number +
                  "\"><instance of=\"" + below + "\" name=\"x\"/><instance of=\"" + below + "\" name=\"y\"/></product>";
    }
    return ladder + R"(<product id="40" file="40.CATPart" partNumber="L40"/>)";
}
