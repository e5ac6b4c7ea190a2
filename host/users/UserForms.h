#pragma once
#include "platform/ui/RegisterEntry.h"

class QPushButton;

namespace host {

class CheckedLinks;

/// The register of users.
const ui::RegisterSpec &users();
/// The register of roles.
const ui::RegisterSpec &roles();

/// The entry form of a user: name, whether active, password, roles.
class UserEntry : public ui::RegisterEntry
{
    Q_OBJECT

public:
    /// The form over `connection`, for a new user.
    UserEntry(data::Connection &connection, QWidget *owner);

protected:
    void resetDetails() override;
    void loadDetails() override;
    void recordSaved() override;
    void writeComputed(data::DataSet &record) const override;
    void writeDetails() override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;

private:
    void choosePassword();
    bool leavesNobodyInControl() const;

    CheckedLinks *roles_;
    QPushButton *password_;
    QString newHash_; // of a password that waits for the save
};

/// The entry form of a role: name and rights.
class RoleEntry : public ui::RegisterEntry
{
    Q_OBJECT

public:
    /// The form over `connection`, for a new role.
    RoleEntry(data::Connection &connection, QWidget *owner);

protected:
    void resetDetails() override;
    void loadDetails() override;
    void writeComputed(data::DataSet &record) const override;
    void writeDetails() override;
    QVariant detailState() const override;
    void restoreDetails(const QVariant &state) override;

private:
    bool leavesNobodyInControl() const;
    bool grantsFullControl() const;

    CheckedLinks *rights_;
};

} // namespace host
