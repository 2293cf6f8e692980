#!/usr/bin/python3
"""Says, after a test run, how many tests were skipped and why, read from ctest's JUnit file.

    skipped_tests_report.py RESULTS.xml

A green run that skipped tests (no PostgreSQL server, no clang for the fuzz targets, ...) must never
pass for a full one: the count and each reason stand in a banner at the very end of the output.
"""

import collections
import sys
import xml.etree.ElementTree as ElementTree


def SkipReason(output):
    """The reason GoogleTest printed after "<file>:<line>: Skipped", or ctest's own words."""
    lines = (output or "").splitlines()
    for at, line in enumerate(lines):
        if line.rstrip().endswith(": Skipped"):
            reason = []
            for following in lines[at + 1:]:
                if following.startswith("[  SKIPPED ]") or following.startswith("["):
                    break
                reason.append(following.strip())
            text = " ".join(part for part in reason if part)
            return text or "skipped without a reason given"
    return "skipped without a reason given"


def Report(results_file):
    """The banner's lines for the JUnit file of a ctest run; empty when nothing was skipped."""
    root = ElementTree.parse(results_file).getroot()
    cases = root.iter("testcase")
    total = 0
    reasons = collections.Counter()
    for case in cases:
        total += 1
        skipped = case.find("skipped")
        if skipped is None and case.get("status") not in ("notrun", "disabled"):
            continue
        output = case.findtext("system-out") or ""
        message = skipped.get("message") if skipped is not None else ""
        if ": Skipped" in output:
            reason = SkipReason(output)
        elif output.strip():
            # A test that skips by its exit code says why in its first line.
            reason = next(line.strip() for line in output.splitlines() if line.strip())
        else:
            reason = message or SkipReason(output)
        reasons[reason] += 1
    skipped_count = sum(reasons.values())
    if skipped_count == 0:
        return [f"All {total} tests ran: none was skipped."]
    rule = "!" * 78
    lines = [rule, f"!! {skipped_count} of {total} tests were SKIPPED: this was NOT a full run.", "!! Why:"]
    for reason, count in sorted(reasons.items(), key=lambda item: (-item[1], item[0])):
        lines.append(f"!!   {count:5d} x {reason}")
    lines.append(rule)
    return lines


def main(argv):
    if len(argv) != 2:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    try:
        lines = Report(argv[1])
    except (OSError, ElementTree.ParseError) as error:
        print(f"The test results '{argv[1]}' could not be read ({error}): whether tests were skipped is unknown.",
              file=sys.stderr)
        return 1
    print("\n".join(lines))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
