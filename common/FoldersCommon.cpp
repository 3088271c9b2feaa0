#include "FoldersCommon.h"

#include "Vlapputils.h"
#include "Vltext.h"

TNodeSource Str2NS(QStringView text)
{
    for (std::size_t i = 0; i < DSRC_ITEMS.size(); ++i) {
        if (SameText(text, QString::fromLatin1(DSRC_ITEMS[i])))
            return static_cast<TNodeSource>(i);
    }
    return nsEIB;
}

const char* SourceText(TNodeSource source)
{
    return source < DSRC_ITEMS.size() ? DSRC_ITEMS[source] : DSRC_ITEMS[nsEIB];
}

TDataTypeMap eis2dt(int eisNumber)
{
    switch (eisNumber) {
    case 6:
        return dtmEIS6;
    case 10:
        return dtmEIS10;
    case 11:
        return dtmEIS11;
    case 14:
        return dtmEIS14;
    default:
        return dtmEIS1;
    }
}

int dt2Eis(TDataTypeMap dataType)
{
    constexpr std::array Numbers{1, 6, 14, 10, 11};
    return dataType < Numbers.size() ? Numbers[dataType] : 1;
}

QString GetResourceUrl(const QString& path, const QString& base, bool withPrefix)
{
    if (path.isEmpty() || path.contains(QStringLiteral("://")))
        return path;
    QString first;
    QString second;
    QString third;
    ExtractRelPath(base.isEmpty() ? GetEnvironment("PRJPATH") : base, path, PathSeparator, first, second, third);

    QString url = withPrefix ? second + third : third;
    const bool rooted = url.startsWith(u'/') || url.startsWith(PathSeparator);
    if (!withPrefix && !url.isEmpty() && !rooted)
        url.prepend(PathSeparator);
    return url.replace(PathSeparator, u'/');
}
