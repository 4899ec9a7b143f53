/// The first screen: the title picture and the way in.
#pragma once

#include <memory>

#include <QWidget>

#include "shell/session.h"

class menu;

class frmFirst : public QWidget {
    Q_OBJECT
public:
    explicit frmFirst(session& s, QWidget* parent = nullptr);
    ~frmFirst() override;

    /// The main window, nullptr before OK.
    menu* principale() const { return menu_.get(); }

private:
    void cmdOK_clic();

    session& s_;
    std::unique_ptr<menu> menu_;
};
