"""Holds answers against the document that describes them: the part of JSON Schema that it uses."""

TYPES = {"object": dict, "array": list, "string": str, "boolean": bool}


def problems_of(value, schema, document, where="answer"):
    if "$ref" in schema:
        name = schema["$ref"].rsplit("/", 1)[1]
        return problems_of(value, document["components"]["schemas"][name], document, where)
    if value is None:
        return [] if schema.get("nullable") else [f"{where} is null"]
    if "oneOf" in schema:
        tried = [problems_of(value, one, document, where) for one in schema["oneOf"]]
        return [] if any(not found for found in tried) else [f"{where} is none of its kinds: {value!r}"]
    kind = schema.get("type")
    whole = isinstance(value, int) and not isinstance(value, bool)
    if kind == "integer" and not whole or kind in TYPES and not isinstance(value, TYPES[kind]):
        return [f"{where} is no {kind}: {value!r}"]
    if "enum" in schema and value not in schema["enum"]:
        return [f"{where} is not one of {schema['enum']}: {value!r}"]
    found = []
    if kind == "object":
        known, others = schema.get("properties", {}), schema.get("additionalProperties")
        found += [f"{where} lacks {name}" for name in schema.get("required", []) if name not in value]
        for name, member in value.items():
            if name in known:
                found += problems_of(member, known[name], document, f"{where}.{name}")
            elif isinstance(others, dict):
                found += problems_of(member, others, document, f"{where}.{name}")
            elif known:
                found.append(f"{where} has {name}, which is not described")
    if kind == "array":
        for number, item in enumerate(value[:50]):
            found += problems_of(item, schema["items"], document, f"{where}[{number}]")
    return found
