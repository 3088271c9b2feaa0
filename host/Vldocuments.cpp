#include "Vldocuments.h"

#include "Vlerrors.h"

#include <utility>

namespace
{

TDocumentListener& CurrentListener()
{
    static TDocumentListener listener;
    return listener;
}

} // namespace

TDocumentListener SetDocumentListener(TDocumentListener listener)
{
    return std::exchange(CurrentListener(), std::move(listener));
}

void ReportDocument(const QObject* source, const QString& path)
{
    Guarded([&] {
        if (CurrentListener())
            CurrentListener()(source, path);
    });
}
