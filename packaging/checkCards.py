#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""checkCards.py <installed tree> <source folder>

Checks that the udev rules, the mount units, the helper programs and the machine profile of an
installed tree agree: reads the rules, applies them to devices and follows every name in them.
Prints a line for each complaint; the status is 1 if there is one.
"""
import configparser
import fnmatch
import os
import re
import sys

TREE, SOURCE = sys.argv[1:3]
UNITS = "/usr/lib/systemd/system"
MARKERS = "lumivault-markers.service"
MANUAL = "man:lumivault-cards(7)"
TOKEN = re.compile(r'\s*([A-Z_]+)(?:\{([^}]*)\})?\s*(==|!=|\+=|=)\s*"([^"]*)"\s*(,|$)')
MATCHES = {"ACTION", "SUBSYSTEM", "KERNEL", "ENV", "ATTRS", "TEST", "PROGRAM"}
ASSIGNMENTS = {"ENV", "SYMLINK", "TAG", "GOTO", "LABEL"}
# Programs on cards can't be started. The files belong to the group of the user at the device.
OPTIONS = "nosuid,nodev,noexec,noatime,umask=0002,gid=plugdev"
# A device: its properties, and the slot that the rules must give it.
CARD = {"ACTION": "add", "SUBSYSTEM": "block", "KERNEL": "mmcblk0p1", "ENV{ID_FS_USAGE}": "filesystem",
        "ENV{ID_FS_TYPE}": "vfat", "ATTRS{type}": "SD", "TEST": True, "PROGRAM": True}
READER = {**CARD, "KERNEL": "sdb1", "ATTRS{type}": "0", "ENV{ID_DRIVE_FLASH_CF}": "1"}
ESP = "c12a7328-f81f-11d2-ba4b-00a0c93ec93b"
DEVICES = [
    ("SD card", CARD, "card"),
    ("SD card with exFAT", {**CARD, "ENV{ID_FS_TYPE}": "exfat"}, "card"),
    ("SD card with FAT12", {**CARD, "ENV{ID_FS_TYPE}": "msdos"}, "card"),
    ("CF card in a reader", READER, "cf"),
    ("card that changes", {**CARD, "ACTION": "change"}, "card"),
    ("card that goes", {**CARD, "ACTION": "remove"}, ""),
    ("disk without a partition", {**CARD, "KERNEL": "mmcblk0"}, ""),
    ("soldered memory", {**CARD, "ATTRS{type}": "MMC"}, ""),
    ("USB stick", {**READER, "ENV{ID_DRIVE_FLASH_CF}": ""}, ""),
    ("card with another file system", {**CARD, "ENV{ID_FS_TYPE}": "ext4"}, ""),
    ("card without a file system", {**CARD, "ENV{ID_FS_USAGE}": ""}, ""),
    ("partition for starting the machine", {**CARD, "ENV{ID_PART_ENTRY_TYPE}": ESP}, ""),
    ("device that is no disk", {**CARD, "SUBSYSTEM": "net"}, ""),
    ("card while this is switched off", {**CARD, "TEST": False}, ""),
    ("card that the system uses", {**CARD, "PROGRAM": False}, ""),
]
complaints = 0


def complain(text):
    global complaints
    complaints += 1
    print(text)


def expect(what, found, wanted):
    if found != wanted:
        complain(f"{what} is {found!r}, not {wanted!r}")


def read(path):
    with open(TREE + path, encoding="utf-8") as file:
        return file.read()


def parse_rule(line):
    """The tokens (key, operator, value) of a line; None if it is not a rule."""
    tokens, place = [], 0
    while place < len(line):
        match = TOKEN.match(line, place)
        if not match:
            return None
        key, attribute, operator, value, _ = match.groups()
        names = MATCHES if operator in ("==", "!=") else ASSIGNMENTS
        if key not in names or (attribute is None) == (key in ("ENV", "ATTRS")):
            return None
        tokens.append((f"{key}{{{attribute}}}" if attribute else key, operator, value))
        place = match.end()
    return tokens


def read_rules(path):
    rules = []
    for number, line in enumerate(read(path).splitlines(), 1):
        if line.strip() and not line.startswith("#"):
            rule = parse_rule(line)
            if rule is None:
                complain(f"{path}:{number}: this is no rule: {line}")
            rules.append(rule or [])
    return rules


def values(rules, key):
    return [value for rule in rules for name, operator, value in rule if name == key]


def holds(device, key, operator, value):
    if key in ("TEST", "PROGRAM"):
        found = device[key]
    else:
        patterns = value.split("|")
        found = any(fnmatch.fnmatchcase(device.get(key, ""), pattern) for pattern in patterns)
    return found == (operator == "==")


def apply_rules(rules, device):
    """The device's properties after the rules."""
    device, label = dict(device), None
    for rule in rules:
        assignments = [token for token in rule if token[1] in ("=", "+=")]
        if label is not None and ("LABEL", "=", label) not in assignments:
            continue
        label = None
        if all(holds(device, *token) for token in rule if token not in assignments):
            for key, _, value in assignments:
                slot = device.get("ENV{LUMIVAULT_SLOT}", "")
                device[key] = value.replace("$env{LUMIVAULT_SLOT}", slot)
            label = device.pop("GOTO", None)
    return device


def read_unit(name):
    unit = configparser.RawConfigParser(strict=False, delimiters="=")
    unit.optionxform = str
    unit.read_string(read(f"{UNITS}/{name}"))
    return unit


def check_jumps(rules):
    labels = values(rules, "LABEL")
    for label in sorted(set(values(rules, "GOTO"))):
        expect(f"the number of labels {label}", labels.count(label), 1)
    for label in labels:
        expect(f"label {label} is used", label in values(rules, "GOTO"), True)


def check_slot(slot, point, device):
    """A mounted slot: its mount point in the profile, the properties of its device."""
    name = point.strip("/").replace("/", "-") + ".mount"
    expect(f"the unit of {slot}", device.get("ENV{SYSTEMD_WANTS}"), name)
    expect(f"the tag of {slot}", device.get("TAG"), "systemd")
    expect(f"{slot} is left alone by UDisks2", device.get("ENV{UDISKS_IGNORE}"), "1")
    unit = read_unit(name)
    link = f"/dev/{device.get('SYMLINK')}"
    waits = link.strip("/").replace("/", "-") + ".device"
    expect(f"What= of {name}", unit["Mount"]["What"], link)
    expect(f"Where= of {name}", unit["Mount"]["Where"], point)
    expect(f"BindsTo= of {name}", unit["Unit"]["BindsTo"], waits)
    expect(f"Documentation= of {name}", unit["Unit"]["Documentation"], MANUAL)
    for key in ("Wants", "PartOf"):
        expect(f"{key}= of {name}", unit["Unit"][key], MARKERS)
    expect(f"After= of {name}", set(unit["Unit"]["After"].split()), {waits, MARKERS})
    expect(f"Options= of {name}", unit["Mount"]["Options"], OPTIONS)


def check_programs(rules, points):
    service = read_unit(MARKERS)
    for found, program, arguments in (
            (values(rules, "PROGRAM"), "idle-disk", ["$major:$minor"]),
            ([service["Service"]["ExecStart"]], "place-markers", []),
            ([service["Service"]["ExecStop"]], "place-markers", ["--remove"])):
        path = f"/usr/libexec/lumivault/{program}"
        expect(f"the call of {program}", found, [" ".join([path, *arguments, *points])])
        expect(f"{path} can be started", os.access(TREE + path, os.X_OK), True)
    expect("Documentation= of the markers", service["Unit"]["Documentation"], MANUAL)
    expect("RemainAfterExit= of the markers", service["Service"]["RemainAfterExit"], "yes")
    before = {point.strip("/").replace("/", "-") + ".mount" for point in points}
    expect("Before= of the markers", set(service["Unit"]["Before"].split()),
           before | {service["Install"]["WantedBy"]})
    wants = f"/etc/systemd/system/{service['Install']['WantedBy']}.wants/{MARKERS}"
    expect("the switch of the rules", values(rules, "TEST"), [wants])


def check_profile_keys(text):
    """Every key of the program is in the profile and the manual page, and no other."""
    with open(f"{SOURCE}/platform/MachineProfile.cpp", encoding="utf-8") as file:
        code = file.read()
    known = set(re.findall(r'\{Key::\w+, "(\w+)", "(\w+)"', code))
    known |= {("Keys", name) for name in re.findall(r'\{kKey\w+, "(\w+)"', code)}
    found = set()
    with open(f"{SOURCE}/packaging/man/lumivault-machine.ini.5", encoding="utf-8") as file:
        manual = file.read()
    for part in re.split(r"^\[", text, flags=re.M)[1:]:
        group, _, lines = part.partition("]")
        found |= {(group, name) for name in re.findall(r"^;?(\w+)=", lines, re.M)}
    explained = set()
    for part in manual.split(".SS [")[1:]:
        group, _, lines = part.partition("]")
        for words in re.findall(r"^\.TP\n\.BR? (.*)", lines, re.M):
            explained |= {(group, name) for name in re.findall(r"\w+", words)}
    for what, keys in (("machine.ini", found), ("its manual page", explained)):
        for group, name in sorted(known ^ keys):
            where = "only the program knows" if (group, name) in known else "the program does not know"
            complain(f"{what}: {where} [{group}] {name}")


profileText = read("/etc/xdg/lumivault/machine.ini")
profile = configparser.RawConfigParser(comment_prefixes=(";",))
profile.read_string(profileText)
slots = {"cf": profile.get("Mounts", "CF", fallback=""), "card": profile.get("Mounts", "SD", fallback="")}
cardRules = read_rules("/usr/lib/udev/rules.d/85-lumivault-cards.rules")
check_jumps(cardRules)
check_programs(cardRules, list(slots.values()))
check_profile_keys(profileText)
for title, properties, wantedSlot in DEVICES:
    result = apply_rules(cardRules, properties)
    foundSlot = result.get("SYMLINK", "").rpartition("/")[2]
    expect(f"the slot of a {title}", foundSlot, wantedSlot)
    if foundSlot and foundSlot == wantedSlot:
        check_slot(wantedSlot, slots[wantedSlot], result)
sys.exit(1 if complaints else 0)
