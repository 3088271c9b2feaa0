#pragma once

#include <QString>

// Collects what the XML libraries complain about while it lives, instead of their printing it. One at a time.
class TXmlMessages
{
public:
    TXmlMessages();
    ~TXmlMessages();
    TXmlMessages(const TXmlMessages&) = delete;
    TXmlMessages& operator=(const TXmlMessages&) = delete;

    // The first complaint in one line, with the line number where there is one; empty without any.
    QString First() const;
};
