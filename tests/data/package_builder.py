"""What the cases of the corpus are built from: the markup of a package, and the list of cases."""

from zip_builder import Entry, archive

NS_CT = "http://schemas.openxmlformats.org/package/2006/content-types"
NS_REL = "http://schemas.openxmlformats.org/package/2006/relationships"
NS_CP = "http://schemas.openxmlformats.org/package/2006/metadata/core-properties"
NS_MC = "http://schemas.openxmlformats.org/markup-compatibility/2006"
REL_CORE = NS_REL + "/metadata/core-properties"
REL_CONTENT = "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content"
TYPE_CORE = "application/vnd.openxmlformats-package.core-properties+xml"
TYPE_RELS = "application/vnd.openxmlformats-package.relationships+xml"
HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>\n'
CT, RELS, CORE, A = "[Content_Types].xml", "_rels/.rels", "docProps/core.xml", "content/a.txt"

CASES = []


def case(name, verdict, what, data, parts="-", unpack="-", kinds="-"):
    """`unpack` is a number of files, or codes in words; "=1" among them is a number that will do as well."""
    if isinstance(unpack, str) and unpack != "-":
        unpack = " ".join(word[1:] if word[0] == "=" else "!" + word for word in unpack.split())
    CASES.append((name, verdict, parts, unpack, kinds, what, data))


def types(*overrides, defaults=(("rels", TYPE_RELS), ("txt", "text/plain")), inner="", attributes="", ns=NS_CT, root="Types"):
    text = "".join(f'<Default Extension="{e}" ContentType="{t}"/>' for e, t in defaults)
    text += "".join(f'<Override PartName="{p}" ContentType="{t}"/>' for p, t in overrides)
    return HEAD + f'<{root} xmlns="{ns}"{attributes}>{text}{inner}</{root}>'


def rel(target, id="rId1", type=REL_CONTENT, more=""):
    return f'<Relationship Id="{id}" Type="{type}" Target="{target}"{more}/>'


def rels(*relationships, attributes="", ns=NS_REL, root="Relationships", head=HEAD):
    return head + f'<{root} xmlns="{ns}"{attributes}>' + "".join(relationships) + f"</{root}>"


def core(inner="<dc:title>t</dc:title>", attributes=""):
    return HEAD + (f'<cp:coreProperties xmlns:cp="{NS_CP}" xmlns:dc="http://purl.org/dc/elements/1.1/" '
                   f'xmlns:dcterms="http://purl.org/dc/terms/" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"{attributes}>'
                   f"{inner}</cp:coreProperties>")


def base(ct=None, rl=None, a=Entry(A, "hello " * 20), more=(), first=()):
    """A content package of one part, with what the case changes."""
    return [*first, Entry(CT, types() if ct is None else ct), Entry(RELS, rels(rel("/content/a.txt")) if rl is None else rl),
            *([a] if a else []), *more]


def with_core(text, more=(), extra_rels=(), overrides=None):
    return archive(base(types(*(overrides or [("/docProps/core.xml", TYPE_CORE)])),
                        rels(rel("/content/a.txt"), rel("docProps/core.xml", "rId2", REL_CORE), *extra_rels),
                        more=[Entry(CORE, text), *more]))


def named(item, target, parts=1, data="x"):
    """A package whose only content is one item of an unusual name."""
    return archive(base(types(("/content/a.txt", "text/plain"), defaults=(("rels", TYPE_RELS), ("txt", "text/plain"))),
                        rels(rel(target)), a=Entry(item, data)))
