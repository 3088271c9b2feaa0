#pragma once

#include <QIODevice>

class TTreeNode;

// A device that keeps nothing of a document but whose line it is that somebody asks for. A document's writer tells it
// (through TLineWriter) whose lines it writes. So the places of nodes in a document are known by those who make it, and
// only when they are asked for.
class TLineFinder final : public QIODevice
{
    Q_OBJECT

public:
    // `line` counts from 1.
    explicit TLineFinder(int line);
    ~TLineFinder() override;

    // What is written from here on is this node's; null for what belongs to none.
    void BeginNode(const TTreeNode* node) { m_writing = node; }

    // Null where the line belongs to no node, and where there is no such line.
    const TTreeNode* Node() const { return m_found; }

    bool isSequential() const override { return true; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    int m_linesToGo; // to the one that is asked for
    const TTreeNode* m_writing = nullptr;
    const TTreeNode* m_found = nullptr;
};
