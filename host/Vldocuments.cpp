#include "Vldocuments.h"

#include "Vlerrors.h"

#include <utility>

namespace
{

TDocumentListener& Current()
{
    static TDocumentListener listener;
    return listener;
}

} // namespace

TDocumentListener SetDocumentListener(TDocumentListener listener)
{
    return std::exchange(Current(), std::move(listener));
}

void ReportDocument(const QObject* source, const QString& path)
{
    Guarded([&] {
        if (Current())
            Current()(source, path);
    });
}
