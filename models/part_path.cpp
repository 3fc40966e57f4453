#include "models/part_path.h"

#include "kelvaris/system/url.h"

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

Expected<FilePath2, ErrorCode2> localPath(const OpcPackagePart& part)
{
    return part.uri().andThen([](const OpcPackagePartUri& uri) { return uri.toUri(); }).andThen([](const Url& url) {
        return url.toLocalFile(UrlLocalFileOptions::relativePath);
    });
}
