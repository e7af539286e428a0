"""Makes a plate with a bore and checks its volume: make_plate.py [ADDRESS]"""

import json
import math
import sys
import time
import urllib.error
import urllib.request

LONGEST_ANSWER_S = 180  # The add-in gives up on a batch after 120 s.


class BatchFailed(Exception):
    """The add-in is not there, or refused the batch as a whole."""


def execute(address, operations):
    """Posts one batch and returns its results by operation name."""
    request = urllib.request.Request(
        address + "/execute",
        # The add-in takes text as it is; it does not decode \u escapes.
        data=json.dumps({"operations": operations}, ensure_ascii=False).encode(),
        headers={"Content-Type": "application/json"},
    )
    try:
        with urllib.request.urlopen(request, timeout=LONGEST_ANSWER_S) as answer:
            return json.load(answer)["results"]
    except urllib.error.HTTPError as refusal:
        reason = json.load(refusal)["error"]
        raise BatchFailed(f"The add-in answered with status {refusal.code}: {reason}") from refusal
    except OSError as failure:
        raise BatchFailed(f"Nothing answers on {address}. Is Creo running, with the add-in in it?") from failure


def main():
    address = sys.argv[1] if len(sys.argv) > 1 else "http://localhost:4001"
    # A session knows its sketches by name, whichever document they are in.
    sketch = f"PLATE_{int(time.time())}"
    operations = {
        "api_document_new_part": {},
        "api_sketch_create": {"name": sketch, "plane": "XY"},
        "api_sketch_rectangle_two_points": {"sketch_name": sketch, "x1": -40, "y1": -25, "x2": 40, "y2": 25},
        "api_sketch_circle_center_radius": {"sketch_name": sketch, "cx": 0, "cy": 0, "radius": 10},
        "api_feature_extrude": {"sketch_name": sketch, "distance_mm": 8},
        "api_analysis_mass_properties": {},
    }
    results = execute(address, operations)
    for name in operations:
        result = results[name]
        print("ok    " if result["success"] else "FAILED", f" {name}  {result['message']}")
    if not all(result["success"] for result in results.values()):
        return 1

    made = results["api_analysis_mass_properties"]["data"]["volume_cm3"]
    meant = (8 * 5 - math.pi * 1**2) * 0.8
    print(f"volume {made:.4f} cm³, meant {meant:.4f} cm³")
    if abs(made - meant) > 1e-3:
        print("The plate is not as meant.", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except BatchFailed as failure:
        sys.exit(str(failure))
