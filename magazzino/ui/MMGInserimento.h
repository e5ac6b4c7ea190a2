#pragma once

/// The names by which the suite knows what an entry form does, over a form that is a ui::EntryForm.
template <typename Form>
class TMMGInserimento : public Form
{
public:
    using Form::Form;

    /// Empties the form for a new record; asks nothing.
    void NuovoRecord() { this->startNew(); }
    /// See ui::EntryForm::openRecord().
    void ApriRecord(int id) { this->openRecord(id); }
    /// See ui::EntryForm::saveRecord().
    bool SalvaRecord() { return this->saveRecord(); }
};
