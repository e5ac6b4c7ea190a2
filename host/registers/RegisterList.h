#pragma once
#include "host/registers/RegisterSpec.h"

namespace host {

/// The list of a register, made from its declaration.
class RegisterList : public ui::SearchForm
{
    Q_OBJECT

public:
    /// `entryForm` shows the register's entry form and returns it.
    RegisterList(const RegisterSpec &spec, data::Connection &connection, std::function<ui::EntryForm &()> entryForm,
                 QWidget *owner);

protected:
    ui::EntryForm &entryForm() override { return entryForm_(); }
    bool deleteRecord(int id) override;

private:
    RegisterSpec register_;
    data::Connection &database_;
    std::function<ui::EntryForm &()> entryForm_;
};

} // namespace host
