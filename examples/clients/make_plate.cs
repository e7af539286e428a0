// Makes a plate with a bore and checks its volume: make_plate [ADDRESS]
//
// In the language and with the libraries that come with Windows; newer ones take it as it is.
using System;
using System.Collections.Generic;
using System.IO;
using System.Net.Http;
using System.Runtime.Serialization;
using System.Runtime.Serialization.Json;
using System.Text;
using System.Threading.Tasks;

[DataContract]
class Answer
{
    [DataMember] public Dictionary<string, Result> results = null;
    [DataMember] public string error = null;
}

[DataContract]
class Result
{
    [DataMember] public bool success = false;
    [DataMember] public string message = null;
    [DataMember] public Data data = null;
}

// What this job reads of the operations' data; fields that an answer doesn't have stay as they are.
[DataContract]
class Data
{
    [DataMember] public double volume_cm3 = double.NaN;
}

static class MakePlate
{
    // A session knows its sketches by name, whichever document they are in.
    static readonly string Sketch = "PLATE_" + DateTime.Now.Ticks / TimeSpan.TicksPerSecond;

    static readonly string[,] Operations =
    {
        { "api_document_new_part", "{}" },
        { "api_sketch_create", "{'name': 'SKETCH', 'plane': 'XY'}" },
        { "api_sketch_rectangle_two_points", "{'sketch_name': 'SKETCH', 'x1': -40, 'y1': -25, 'x2': 40, 'y2': 25}" },
        { "api_sketch_circle_center_radius", "{'sketch_name': 'SKETCH', 'cx': 0, 'cy': 0, 'radius': 10}" },
        { "api_feature_extrude", "{'sketch_name': 'SKETCH', 'distance_mm': 8}" },
        { "api_analysis_mass_properties", "{}" }
    };

    static string Batch()
    {
        var steps = new List<string>();
        for (int i = 0; i < Operations.GetLength(0); i++)
            steps.Add("'" + Operations[i, 0] + "': " + Operations[i, 1]);
        return ("{'operations': {" + string.Join(", ", steps) + "}}").Replace('\'', '"').Replace("SKETCH", Sketch);
    }

    static Answer Execute(string address, string batch)
    {
        // The add-in gives up on a batch after 120 s.
        using (var client = new HttpClient { Timeout = TimeSpan.FromSeconds(180) })
        {
            var body = new StringContent(batch, Encoding.UTF8, "application/json");
            var response = client.PostAsync(address + "/execute", body).GetAwaiter().GetResult();
            var form = new DataContractJsonSerializerSettings { UseSimpleDictionaryFormat = true };
            var reader = new DataContractJsonSerializer(typeof(Answer), form);
            using (Stream stream = response.Content.ReadAsStreamAsync().GetAwaiter().GetResult())
                return (Answer)reader.ReadObject(stream);
        }
    }

    static int Main(string[] arguments)
    {
        string address = arguments.Length > 0 ? arguments[0] : "http://localhost:4001";
        Answer answer;
        try
        {
            answer = Execute(address, Batch());
        }
        catch (Exception failure)
        {
            if (!(failure is HttpRequestException || failure is TaskCanceledException)) throw;
            Console.Error.WriteLine("Nothing answers on " + address + ". Is Creo running, with the add-in in it?");
            return 1;
        }
        if (answer.results == null)
        {
            Console.Error.WriteLine("The add-in refused the batch: " + answer.error);
            return 1;
        }

        bool allWell = true;
        for (int i = 0; i < Operations.GetLength(0); i++)
        {
            string name = Operations[i, 0];
            Result result = answer.results[name];
            Console.WriteLine("{0}  {1}  {2}", result.success ? "ok    " : "FAILED", name, result.message);
            allWell = allWell && result.success;
        }
        if (!allWell) return 1;

        double made = answer.results["api_analysis_mass_properties"].data.volume_cm3;
        double meant = (8 * 5 - Math.PI * 1 * 1) * 0.8;
        Console.WriteLine("volume {0:F4} cm³, meant {1:F4} cm³", made, meant);
        if (Math.Abs(made - meant) < 1e-3) return 0;
        Console.Error.WriteLine("The plate is not as meant.");
        return 1;
    }
}
