#pragma once

#include "CATCommand.h"

// The application's document window, parent of its dialogs.
class PLATFORM_API CATDlgDocument : public CATCommand
{
public:
    using CATCommand::CATCommand;
};
