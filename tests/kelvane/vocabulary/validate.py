#!/usr/bin/python3
"""Holds files against a schema: validate.py SCHEMA FILE...

The schema is RELAX NG (NAME.rng) or JSON Schema (any other name). Each file that isn't valid is told in a line,
"FILE: line: why". Ends with 0 when it could look, whatever it found.
"""
import json
import sys

from jsonschema import Draft202012Validator
from lxml import etree


def relax_ng(schema):
    grammar = etree.RelaxNG(etree.parse(schema))

    def fault(file):
        if grammar.validate(etree.parse(file)):
            return None
        last = grammar.error_log.last_error
        return f"{last.line}: {last.message}" if last else "0: it isn't valid"

    return fault


def json_schema(schema):
    with open(schema, encoding="utf-8") as stream:
        whole = json.load(stream)
    Draft202012Validator.check_schema(whole)
    validator = Draft202012Validator(whole)

    def fault(file):
        with open(file, encoding="utf-8") as stream:
            error = next(validator.iter_errors(json.load(stream)), None)
        return error and f"0: {error.message[:200]}"

    return fault


def main(schema, *files):
    fault = relax_ng(schema) if schema.endswith(".rng") else json_schema(schema)
    for file in files:
        if why := fault(file):
            print(f"{file}: {why}")


main(*sys.argv[1:])
