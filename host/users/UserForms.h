#pragma once
#include "platform/ui/RegisterEntry.h"

#include <QPushButton>

namespace host {

class CheckedLinks;
struct CheckedLinksSpec;

/// The register of users.
const ui::RegisterSpec &users();
/// The register of roles.
const ui::RegisterSpec &roles();

/// An entry form with a check list of links, which needs full control and leaves at least one user who has it.
class LinkedEntry : public ui::RegisterEntry
{
    Q_OBJECT

protected:
    using ui::RegisterEntry::RegisterEntry;

    /// Adds the check list in a box of its own below what stands on the page, and what a save needs first of all.
    void addLinks(const CheckedLinksSpec &spec, const QString &title);
    /// Ends the declaration, with the last check of a save.
    void finish();
    CheckedLinks &links() const { return *links_; }
    /// Would nobody have full control after a save? Asked before it; refuseIfNobodyInControl() asks inside it.
    virtual bool leavesNobodyInControl() const = 0;
    void refuseIfNobodyInControl() const;
    void writeComputed(data::DataSet &record) const override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;

private:
    CheckedLinks *links_ = nullptr;
};

/// The entry form of a user: name, whether active, password, roles.
class UserEntry : public LinkedEntry
{
    Q_OBJECT

public:
    /// The form over `connection`, for a new user.
    UserEntry(data::Connection &connection, QWidget *owner);

protected:
    bool leavesNobodyInControl() const override;
    void resetDetails() override;
    void loadDetails() override;
    void recordSaved() override;
    void writeComputed(data::DataSet &record) const override;
    void writeDetails() override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;

private:
    void choosePassword();

    QPushButton *password_;
    QString newHash_; // of a password that waits for the save
};

/// The entry form of a role: name and rights.
class RoleEntry : public LinkedEntry
{
    Q_OBJECT

public:
    /// The form over `connection`, for a new role.
    RoleEntry(data::Connection &connection, QWidget *owner);

protected:
    bool leavesNobodyInControl() const override;
    void resetDetails() override;
    void loadDetails() override;
    void writeDetails() override;

private:
    bool grantsFullControl() const;
};

} // namespace host
