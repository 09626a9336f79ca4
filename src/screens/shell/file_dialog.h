#pragma once

#include "platform/file_choice.h"

#include <QObject>
#include <QPointer>

class QQmlEngine;
class QQuickWindow;

namespace tarnwick {

/// Answers the questions for a file or a folder by the desktop's dialog, over the window. The
/// dialog is loaded when it is asked for. There is one at a time: a question asked over another is
/// not put.
class FileDialog : public QObject
{
    Q_OBJECT

public:
    FileDialog(QQmlEngine &engine, QQuickWindow *window);

private:
    void ask(const platform::FileQuestion &question, const platform::FileChosen &chosen);

    QQmlEngine &m_engine;
    QQuickWindow *m_window;
    QPointer<QObject> m_dialog;
    platform::ScopedFileDialog m_guard;
};

} // namespace tarnwick
