"""Builds one program with many changes, one of which an environment variable selects."""

import re

VARIABLE = "TALMO_MUTANT"
PROLOGUE = (
    "#include <cstdlib>\n"
    # A function, since a variable might be read before it is initialised.
    "namespace { int talmoNumber() { static const int number = std::getenv(\"" + VARIABLE + "\") != nullptr "
    "? std::atoi(std::getenv(\"" + VARIABLE + "\")) : 0; return number; } }\n"
    "#define talmoMutant talmoNumber()\n")


class Switch:
    """Writes a file with all of the given changes that a switch can select."""

    def __init__(self, text, mutants, regions):
        self.text = text
        self.numbers = {mutant: number for number, mutant in enumerate(mutants, 1)}
        self.regions = sorted(set(regions), key=lambda region: (region.start, -region.end, region.form != "run"))
        self.home = {}
        for mutant in mutants:
            holding = [region for region in self.regions if self.can_hold(region, mutant)]
            if holding:
                self.home[mutant] = min(holding, key=lambda region: region.end - region.start)

    @staticmethod
    def can_hold(region, mutant):
        if not (region.start <= mutant.start and mutant.end <= region.end):
            return False
        if mutant.kind == "order":
            return region.form == "run"
        if mutant.kind == "early return":
            return region.form == "entry"
        return region.form not in ("run", "entry")

    def held(self):
        return list(self.home)

    def drop(self, mutants):
        for mutant in mutants:
            self.home.pop(mutant, None)

    def write(self):
        used = {}
        for mutant, region in self.home.items():
            used.setdefault(region, []).append(mutant)
        order = [region for region in self.regions if region in used]
        body = self.render(0, len(self.text), order, used)
        return PROLOGUE + body

    def render(self, start, end, order, used):
        """The text from start to end, with a switch in place of each outermost region in it."""
        parts, position = [], start
        inside = [region for region in order if start <= region.start and region.end <= end]
        while inside:
            region, inside = inside[0], inside[1:]
            before = self.text[position:region.start]
            if region.form == "value":  # A value selected at run time is not a constant expression.
                cut = max(before.rfind(";"), before.rfind("{"), before.rfind("}")) + 1
                before = before[:cut] + re.sub(r"\bconstexpr\b", "const", before[cut:])
            parts.append(before)
            nested = [each for each in inside if each.end <= region.end]
            inside = [each for each in inside if each.start >= region.end]
            parts.append(self.choice(region, used[region], self.render(region.start, region.end, nested, used)))
            position = region.end
        parts.append(self.text[position:end])
        return "".join(parts)

    def choice(self, region, mutants, unchanged):
        variants = []
        for mutant in mutants:
            number = self.numbers[mutant]
            changed = self.text[region.start:mutant.start] + mutant.replacement + self.text[mutant.end:region.end]
            variants.append((number, f"/*V{number}*/{changed}/*W{number}*/"))
        if region.form == "entry":
            leaving = "".join(f"\nif (talmoMutant == {number}) {variant}\n}}" for number, variant in variants)
            return "{" + leaving
        if region.form in ("run", "statement"):
            return "".join(f"\nif (talmoMutant == {number}) {{ {variant}\n}} else " for number, variant in variants) \
                + "{ " + unchanged + "\n}"
        cast = "static_cast<bool>" if region.form == "condition" else ""
        return "(" + "".join(f"\ntalmoMutant == {number} ? {cast}({variant}\n) : " for number, variant in variants) \
            + f"{cast}({unchanged}\n))"


def blamed(written, errors, switch):
    """The changes on the lines with errors, or else those of the statements that contain the lines."""
    by_number = {number: mutant for mutant, number in switch.numbers.items()}
    lines = {int(line) for line in errors}
    active, recent, found = set(), [], set()
    for index, line in enumerate(written.split("\n"), 1):
        opened = {int(number) for number in re.findall(r"/\*V(\d+)\*/", line)}
        here = active | opened
        recent = (recent + sorted(opened))[-1:] if opened else recent
        if index in lines:
            found |= here or set(recent)
        active = here - {int(number) for number in re.findall(r"/\*W(\d+)\*/", line)}
    return [by_number[number] for number in found]
