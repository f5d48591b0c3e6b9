#include "foundation/TemporaryFolder.h"

#include "foundation/LibPath.h"
#include "foundation/LibTools.h"

TemporaryFolder::TemporaryFolder()
{
    LibUniqueName(path, "zip");
    exists = Libmkdir(path.Path());
}

TemporaryFolder::~TemporaryFolder()
{
    LibString above;
    if (!exists || !LibGetParentPath(path.Path(), above))
        return;
    LibChangeDirectory(above);
    LibUnlink(path.Path());
}
