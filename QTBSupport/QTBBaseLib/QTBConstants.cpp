#include "QTBConstants.h"

const CATUnicodeString usSTRING("string");
const CATUnicodeString usSIMPLE_LIST("list");
const CATUnicodeString usNAME_VALUE_LIST("nvlist");
const CATUnicodeString usTABLE("table");
const CATUnicodeString usOBJECT("object");
const CATUnicodeString usOBJECT_LIST("objectlist");

const CATUnicodeString usCATPRODUCT("CATProduct");
const CATUnicodeString usCATPART("CATPart");
const CATUnicodeString usCATDRAWING("CATDrawing");
const CATUnicodeString usCMIARCHIVE("CMIArchive");
const CATUnicodeString usCGR("CGR");
const CATUnicodeString usDESIGNTABLE("DesignTable");
const CATUnicodeString usV4MODEL("V4Model");
const CATUnicodeString usEMBCOMP("EmbeddedComponent");
const CATUnicodeString usBROKENLINK("BrokenLink");

const CATUnicodeString usIGNORE_NODE("IGNORE");
const CATUnicodeString usSKIP_NODE("SKIP");

const CATUnicodeString usLEFT_TO_RIGHT("LeftToRight");
const CATUnicodeString usRIGHT_TO_LEFT("RightToLeft");

const CATUnicodeString usLOAD_STRUCTURE("LoadStructure");
const CATUnicodeString usOPEN_SELECTED_BNDBOX("OpenSelectedBndBox");
