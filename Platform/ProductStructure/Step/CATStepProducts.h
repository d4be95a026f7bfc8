#pragma once

#include "CATDataType.h"
#include "CATListValCATBaseUnknown_var.h"
#include "CATPrdStructure.h"
#include "CATStepAssembly.h"
#include "CATUnicodeString.h"
#include "PlatformExport.h"

// Products of the session from STEP assemblies; docs/formats.md says what becomes of what a file says. Apart from the
// rest of the products, so that only who links this needs the STEP reader.
class PLATFORM_API CATStepProducts
{
public:
    // Opens the documents of an assembly, with the boxes and placements of its products when asked for. Fails as
    // CATProductServices::Open does, and with an error (catalog "CATProductStructure") that names file, line and reason
    // for a file that is refused; nothing is opened then.
    static HRESULT OpenFile(const CATUnicodeString& usPath, CATListValCATBaseUnknown_var* pDocuments,
                            CATStepContent content = CATStepContent::Structure);

    // The product structure that an assembly stands for. Its documents lie in that directory.
    static CATPrdStructure ToStructure(const CATStepAssembly& assembly, const CATUnicodeString& directory);

    // Instances that the file does not name carry this user property: "designator" when the name is the reference
    // designator, "derived" when it was made from the child's name.
    static constexpr const char* NAME_ORIGIN = "InstanceNameOrigin";
    // User property of every loaded product: name of the STEP file that defines it.
    static constexpr const char* SOURCE_FILE = "SourceFile";
};
