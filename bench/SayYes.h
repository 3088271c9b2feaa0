#pragma once

#include "Vlmessages.h"

// Says Yes to every question and keeps everything else to itself, while it lives.
class TSayYes final : public IMessageHandler
{
public:
    TSayYes() : m_previous(SetMessageHandler(this)) {}
    ~TSayYes() override { SetMessageHandler(m_previous); }
    TSayYes(const TSayYes&) = delete;
    TSayYes& operator=(const TSayYes&) = delete;

    void ShowInformation(const QString&) override {}
    void ShowError(const QString&) override {}
    bool Confirm(const QString&) override { return true; }
    void Note(const QObject*, const QString&) override {}

private:
    IMessageHandler* m_previous;
};
