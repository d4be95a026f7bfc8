#pragma once

#include "PlatformExport.h"

class CATCommandHeaderRegister;

// The commands that the application has of itself. They work on the selected objects of the current editor and fail,
// quietly, when there is no editor or, where they need one, no object.
class PLATFORM_API CATStandardCommands
{
public:
    // Makes the object the only selected one; selects it beside the others; selects nothing.
    static constexpr const char* SELECT = "CATAfrSelectHdr";
    static constexpr const char* ADD_TO_SELECTION = "CATAfrAddToSelectionHdr";
    static constexpr const char* CLEAR_SELECTION = "CATAfrClearSelectionHdr";

    // Those in the context menu of every object, in their order.
    static constexpr const char* CONTEXT_MENU[] = {SELECT, ADD_TO_SELECTION, CLEAR_SELECTION};

    // Adds their headers. Called by the frame when it is made.
    static void AddHeaders(CATCommandHeaderRegister& headers);
};
