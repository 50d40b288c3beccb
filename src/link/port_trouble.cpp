#include "link/port_trouble.h"

#include <algorithm>
#include <string_view>

#include "common/number_text.h"

namespace comm {

namespace {

/// As it is typed to a shell: what a shell would take apart stands in quotes.
std::string Quoted(const std::string& word) {
    constexpr std::string_view Plain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./:@+,";
    if (!word.empty() && word.find_first_not_of(Plain) == std::string::npos) {
        return word;
    }
    std::string quoted = "'";
    for (const char character : word) {
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return quoted + "'";
}

/// A command on a line of its own.
std::string Command(const std::string& command) {
    return "\n    " + command + "\n";
}

/// The port by its name and what it stands for.
std::string NameOf(const std::string& port, const PortCondition& condition) {
    return condition.Device.empty() ? port : port + " (" + condition.Device + ")";
}

std::string ListOf(const Enumerate::PortList& known) {
    if (known.UpperBound() == 0) {
        return "This computer shows no serial port by name.";
    }
    std::string text = "These ports are there:";
    for (const std::string& entry : known) {
        text += "\n    " + entry;
    }
    return text;
}

std::string MissingText(const std::string& name, const Enumerate::PortList& known) {
    return "There is no device " + name +
           ": it is unplugged or switched off, or the radio is on another port.\n" + ListOf(known);
}

std::string RightsText(const std::string& name, const PortRights& rights) {
    const std::string who = rights.Operator.empty() ? "You" : "The account " + rights.Operator;
    std::string text = who + " may not use " + name + ".\n";
    if (rights.Group.empty()) {
        return text + "Only an administrator can allow it.";
    }
    if (rights.InGroup) {
        return text + "The group " + rights.Group +
               " may, and the account is in it, but this session began before: log out and in "
               "again.";
    }
    return text + "The group " + rights.Group + " may. Join it, then log out and in again:" +
           Command("sudo usermod -aG " + Quoted(rights.Group) + " " +
                   (rights.Operator.empty() ? "$USER" : Quoted(rights.Operator)));
}

std::string UseText(const std::string& name, const PortCondition& condition) {
    std::vector<PortUser> users = condition.Users;
    if (users.empty() && condition.Lock) {
        users.push_back(condition.Lock->Owner);
    }
    if (users.empty()) {
        return name + " is in use by another program, which the system does not name to you." +
               (condition.Device.empty()
                    ? std::string(" Close it and try again.")
                    : " This does:" + Command("sudo fuser -v " + Quoted(condition.Device)));
    }
    std::string text = name + " is in use by ";
    for (std::size_t i = 0; i < users.size(); ++i) {
        text += (i == 0 ? "" : ", ") + ProgramText(users[i]);
    }
    return text + ". End it and try again.";
}

std::string LockText(const std::string& name, const PortLock& lock) {
    const std::string owner =
        lock.Owner.Process == 0
            ? std::string("a program that it does not name")
            : "process " + IntegerToText(lock.Owner.Process) + ", which has ended";
    return name + " is free, but a lock was left behind by " + owner +
           ". Remove it:" + Command("sudo rm " + Quoted(lock.File));
}

}  // namespace

PortTrouble TroubleOf(const PortCondition& condition) {
    if (!condition.Exists) {
        return PortTrouble::Missing;
    }
    if (!condition.IsSerial) {
        return PortTrouble::NotSerial;
    }
    if (!condition.Rights.MayOpen) {
        return PortTrouble::NotAllowed;
    }
    const bool locked = condition.Lock && condition.Lock->OwnerRuns;
    if (!condition.Users.empty() || condition.Busy || locked) {
        return PortTrouble::InUse;
    }
    return condition.Lock ? PortTrouble::LockLeft : PortTrouble::Unknown;
}

std::string ProgramText(const PortUser& user) {
    if (user.Process == 0) {
        return user.Program.empty() ? "another program" : user.Program;
    }
    const std::string process = "process " + IntegerToText(user.Process);
    return user.Program.empty() ? process : user.Program + " (" + process + ")";
}

std::string PortTroubleText(const std::string& port, const PortCondition& condition,
                            const Enumerate::PortList& known, const std::string& reason) {
    const std::string name = NameOf(port, condition);
    switch (TroubleOf(condition)) {
        case PortTrouble::Missing:
            return MissingText(name, known);
        case PortTrouble::NotSerial:
            return name + " is no serial port.\n" + ListOf(known);
        case PortTrouble::NotAllowed:
            return RightsText(name, condition.Rights);
        case PortTrouble::InUse:
            return UseText(name, condition);
        case PortTrouble::LockLeft:
            return LockText(name, *condition.Lock);
        default:
            return reason.empty() ? reason : "The system says: " + reason;
    }
}

}  // namespace comm
