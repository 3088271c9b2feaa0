#pragma once

#include "FoldersCommon.h"

#include <QPointer>

// The one properties dialog of an editor family, and the frame that shows a node in it, if one does. The dialog belongs
// to the frame that made it. A frame offers ApplyPending, HandleDialogAccept (with the dialog), HandleDialogClose and
// HandleMoveNotify, and makes this class its friend when it keeps them to itself.
template <class TDialog, class TFrame> class TSharedDialog
{
public:
    // Null while there is none.
    TDialog* Get() const { return m_dialog; }

    bool IsShownBy(const TFrame* frame) const { return m_dialog && m_frame == frame && m_dialog->isVisible(); }
    // True when the frame's changes are to be taken over before it shows another node.
    bool HasPending(const TFrame* frame) const
    {
        return IsShownBy(frame) && m_dialog->GetChanged() && m_dialog->GetAutoAccept();
    }

    // Wires the dialog, made on first use, to a frame. The frame that had it before is left with its changes applied.
    // True unless the frame had it already.
    bool Take(TFrame* frame)
    {
        if (m_frame == frame && m_dialog)
            return false;
        if (m_frame && m_frame != frame) {
            m_frame->ApplyPending();
            m_frame->HandleDialogClose();
        }
        if (!m_dialog)
            m_dialog = new TDialog(frame);
        m_frame = frame;
        m_dialog->SetCloseEvent([frame](QObject*) { frame->HandleDialogClose(); });
        m_dialog->SetApplyEvent([frame, dialog = m_dialog.data()](QObject*) { frame->HandleDialogAccept(dialog); });
        m_dialog->SetMoveEvent([frame](QObject*, TDirection direction) { frame->HandleMoveNotify(direction); });
        return true;
    }

    // The frame shows nothing in the dialog any more.
    void LeaveBy(const TFrame* frame)
    {
        if (m_frame == frame)
            m_frame = nullptr;
    }

    // Deletes the dialog. Changes that wait in it are applied; the frame that has it forgets its node first.
    void Release()
    {
        if (m_frame) {
            m_frame->ApplyPending();
            m_frame->HandleDialogClose();
        }
        m_frame = nullptr;
        delete m_dialog.data();
    }

private:
    QPointer<TDialog> m_dialog;
    QPointer<TFrame> m_frame;
};
