#pragma once

#include "presentation/frame/PresenterBase.h"
#include "presentation/frame/UpdateViewGuard.h"

#include <sigc++/signal.h>

#include <string>

namespace Zem {

// What the two window presenters share: settings kept until the view exists, and a closed signal raised once,
// from the main loop after the window is gone, so that a slot may delete the presenter.
template <class V> class WindowPresenterBase : public PresenterBase<V> {
public:
    ~WindowPresenterBase() override { _isClosed = true; }

    // Raised once per window, after it was hidden; the presenter may be deleted in a slot.
    sigc::signal<void> signalClosed;

    void setTitle(const std::string& title)
    {
        _title = title;
        if (this->_isViewInited)
            this->_view->setTitle(_title);
    }
    const std::string& getTitle() const { return _title; }

    // The content view belongs to its own presenter, which outlives the window or is deleted after it.
    void setContent(IView* content)
    {
        _content = content;
        if (this->_isViewInited)
            this->_view->setContent(_content);
    }

    void setModal(bool isModal)
    {
        _isModal = isModal;
        if (this->_isViewInited)
            this->_view->setModal(_isModal);
    }

    void setDefaultSize(int width, int height)
    {
        _width = width;
        _height = height;
        if (this->_isViewInited)
            this->_view->setDefaultSize(_width, _height);
    }

    // Makes the window if needed and shows it over `owner`. GUI thread.
    void show(IView* owner)
    {
        if (_isClosed)
            return;
        this->getView();
        this->_view->showOver(owner);
    }

    // Hides the window and posts the closed signal; later calls do nothing.
    void close()
    {
        if (_isClosed)
            return;
        _isClosed = true;
        if (this->_isViewInited)
            this->_view->close();
        _updateViewGuard.safeBeginUpdateView([this] {
            // A slot may delete this presenter and the signal with it: the copy shares the slots and releases them
            // once the emission is over.
            sigc::signal<void> closed = signalClosed;
            closed.emit();
        });
    }

    bool isClosed() const { return _isClosed; }

protected:
    void _onViewInited() override
    {
        V& view = *this->_view;
        view.setTitle(_title);
        view.setModal(_isModal);
        if (_width > 0 && _height > 0)
            view.setDefaultSize(_width, _height);
        view.setContent(_content);
        view.signalCloseRequested.connect([this] { _onCloseRequested(); });
    }

    virtual void _onCloseRequested() { close(); }

private:
    std::string _title;
    IView* _content = nullptr;
    bool _isModal = false;
    int _width = 0;
    int _height = 0;
    bool _isClosed = false;
    UpdateViewGuard _updateViewGuard;
};

} // namespace Zem
