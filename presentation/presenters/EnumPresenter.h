#pragma once

#include "core/common/ScopedConnection.h"
#include "presentation/presenters/DataPresenter.h"
#include "presentation/views/IEnumView.h"

#include <memory>
#include <string>

namespace ZemTree {

class ExternalEnumLimiterPresenter;

// A selector of one value (a text, such as a channel path) out of a list that an ExternalEnumLimiterPresenter holds
// and shares with other selectors. The data is the value itself. A value the list does not hold, such as a stale
// channel path or an unknown word from a file, stays the data and is shown as it is, marked missing, until the
// user chooses another: it is never replaced in silence. signalDataChanged fires for a user's choice only.
class EnumPresenter : public DataPresenter<std::string, IEnumView> {
public:
    EnumPresenter() = default;
    ~EnumPresenter() override;

    void setData(std::string value) override;

    // The list in force; a presenter that is not an ExternalEnumLimiterPresenter counts as none.
    void setExternalLimiter(const std::shared_ptr<Zem::IPresenter>& limiter);
    const std::shared_ptr<Zem::IPresenter>& getExternalLimiter() const { return _limiterHolder; }

    // Whether the data is a value that the list in force lacks.
    bool isValueMissing() const;

protected:
    std::unique_ptr<IEnumView> _createDefaultView() override;
    void _onViewInited() override;

private:
    void _updateView();
    void _viewValueChosen(const std::string& value);

    std::shared_ptr<Zem::IPresenter> _limiterHolder;
    ExternalEnumLimiterPresenter* _limiter = nullptr;
    Zem::ScopedConnection _limiterConnection;
};

} // namespace ZemTree
