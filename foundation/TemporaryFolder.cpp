#include "foundation/TemporaryFolder.h"

#include <Directory.h>

#include "foundation/LibPath.h"
#include "foundation/LibTools.h"

TemporaryFolder::TemporaryFolder()
{
    LibGetWorkingDirectory(before);
    LibUniqueName(path, "zip");
    exists = Libmkdir(path.Path());
}

TemporaryFolder::~TemporaryFolder()
{
    if (!exists)
        return;
    const BDirectory folder(path.Path());
    if (BPath(&folder) == BPath(".")) // the tools go there and do not come back
        LibChangeDirectory(before.Path());
    LibUnlink(path.Path());
}
