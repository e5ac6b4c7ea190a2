#pragma once
#include "platform/ui/RegisterSpec.h"

namespace ui {

/// The list of a register, made from its declaration.
class RegisterList : public SearchForm
{
    Q_OBJECT

public:
    /// `entryForm` shows the register's entry form and returns it.
    RegisterList(const RegisterSpec &spec, data::Connection &connection, std::function<EntryForm &()> entryForm,
                 QWidget *owner);

protected:
    EntryForm &entryForm() override { return entryForm_(); }
    bool deleteRecord(int id) override;

private:
    RegisterSpec register_;
    data::Connection &database_;
    std::function<EntryForm &()> entryForm_;
};

} // namespace ui
