#pragma once

#include "CATUnicodeString.h"

// Names with a fixed meaning in the node model.
namespace QTBReservedNames {

// Relation from a PDM node to the rep nodes that show it, and from a rep node to its child rep nodes. Every other
// relation name is the name of a PDM relation class.
inline const CATUnicodeString PDM_TO_REP("PdmToRep");
inline const CATUnicodeString REP_TO_REP("RepToRep");

// Key and class of the root node that stands for the PDM graph until the first update.
inline const CATUnicodeString DEFAULT_ROOT_NODE("DEFAULT_ROOT_NODE");

// Name/value list of a PDM node that holds its info attributes.
inline const CATUnicodeString QTB_INFO("QtbInfo");

} // namespace QTBReservedNames
