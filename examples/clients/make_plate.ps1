# Makes a plate with a bore and checks its volume: make_plate.ps1 [-Address http://localhost:4001]
param([string]$Address = 'http://localhost:4001')
$ErrorActionPreference = 'Stop'

# A session knows its sketches by name, whichever document they are in.
$sketch = "PLATE_$([DateTimeOffset]::Now.ToUnixTimeSeconds())"
$batch = [ordered]@{
  api_document_new_part           = @{}
  api_sketch_create               = @{ name = $sketch; plane = 'XY' }
  api_sketch_rectangle_two_points = @{ sketch_name = $sketch; x1 = -40; y1 = -25; x2 = 40; y2 = 25 }
  api_sketch_circle_center_radius = @{ sketch_name = $sketch; cx = 0; cy = 0; radius = 10 }
  api_feature_extrude             = @{ sketch_name = $sketch; distance_mm = 8 }
  api_analysis_mass_properties    = @{}
}

# The add-in gives up on a batch after 120 s.
$request = @{
  Uri         = "$Address/execute"
  Method      = 'Post'
  ContentType = 'application/json; charset=utf-8'
  Body        = @{ operations = $batch } | ConvertTo-Json -Depth 10
  TimeoutSec  = 180
}
try {
  $results = (Invoke-RestMethod @request).results
} catch {
  if ($_.Exception.Response) {
    Write-Host "The add-in refused the batch: $($_.ErrorDetails.Message)"
  } else {
    Write-Host "Nothing answers on $Address. Is Creo running, with the add-in in it?"
  }
  exit 1
}

$failed = $false
foreach ($name in $batch.Keys) {
  $result = $results.$name
  $mark = if ($result.success) { 'ok    ' } else { 'FAILED' }
  if (-not $result.success) { $failed = $true }
  Write-Host "$mark  $name  $($result.message)"
}
if ($failed) { exit 1 }

$made = $results.api_analysis_mass_properties.data.volume_cm3
$meant = (8 * 5 - [Math]::PI * 1 * 1) * 0.8
# PowerShell 5.1 takes a script without a mark at its head for one in the machine's code page.
Write-Host ("volume {0:F4} cm$([char]0xB3), meant {1:F4} cm$([char]0xB3)" -f $made, $meant)
if ([Math]::Abs($made - $meant) -gt 1e-3) {
  Write-Host 'The plate is not as meant.'
  exit 1
}
exit 0
